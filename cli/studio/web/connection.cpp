#include "studio/web/connection.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace varnix::cli::web {

namespace {

constexpr std::chrono::seconds kWritingLimit{20};
constexpr std::chrono::milliseconds kLastWords{200};
constexpr std::size_t kMostLastWords = 64 << 10;

}  // namespace

bool Connection::await(short event, Clock::time_point end) const {
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return false;
    pollfd ready{socket_, event, 0};
    const int count = poll(&ready, 1, static_cast<int>(left));
    if (count > 0) return true;
    if (count < 0 && errno != EINTR) return false;
  }
}

bool Connection::is_readable() const { return begin_ < end_ || await(POLLIN, readEnd_); }
bool Connection::is_writable() const { return await(POLLOUT, Clock::now() + kWritingLimit); }

ssize_t Connection::read(char* to, std::size_t size) {
  if (begin_ == end_) {
    const std::size_t most = std::min(allowed_, buffer_.size());
    if (most == 0 || !await(POLLIN, readEnd_)) return -1;
    const ssize_t count = recv(socket_, buffer_.data(), most, 0);
    if (count <= 0) return count;
    begin_ = 0;
    end_ = static_cast<std::size_t>(count);
    allowed_ -= end_;
  }
  const std::size_t taken = std::min(size, end_ - begin_);
  std::memcpy(to, buffer_.data() + begin_, taken);
  begin_ += taken;
  return static_cast<ssize_t>(taken);
}

ssize_t Connection::write(const char* from, std::size_t size) {
  if (writeEnd_ == Clock::time_point{}) writeEnd_ = Clock::now() + kWritingLimit;
  if (!await(POLLOUT, writeEnd_)) return -1;
  return send(socket_, from, size, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void Connection::finish() {
  shutdown(socket_, SHUT_WR);
  const auto end = Clock::now() + kLastWords;
  std::size_t taken = 0;
  while (taken < kMostLastWords && await(POLLIN, end)) {
    const ssize_t count = recv(socket_, buffer_.data(), buffer_.size(), 0);
    if (count <= 0) return;
    taken += static_cast<std::size_t>(count);
  }
}

// Nothing asks for addresses: every client is on this machine.
void Connection::get_remote_ip_and_port(std::string&, int&) const {}
void Connection::get_local_ip_and_port(std::string&, int&) const {}

}  // namespace varnix::cli::web
