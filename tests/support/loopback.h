// A server on this machine for a single HTTP request, on a thread of its own.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <charconv>
#include <string>
#include <thread>

namespace test {

class LoopbackServer {
 public:
  /// Answers the first request with these bytes.
  explicit LoopbackServer(std::string answer) : answer_(std::move(answer)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, any, size) != 0 || listen(listener_, 1) != 0 ||
        getsockname(listener_, any, &size) != 0)
      std::abort();
    address_ = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    thread_ = std::thread([this] { serve(); });
  }
  ~LoopbackServer() {
    shutdown(listener_, SHUT_RDWR);
    if (thread_.joinable()) thread_.join();
    close(listener_);
  }
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  const std::string& address() const { return address_; }
  /// Waits for the request and returns it. Call this only once.
  const std::string& received() {
    thread_.join();
    return received_;
  }

 private:
  void serve() {
    const int connection = accept(listener_, nullptr, nullptr);
    if (connection < 0) return;
    char bytes[4096];
    while (!isWhole()) {
      const ssize_t count = recv(connection, bytes, sizeof bytes, 0);
      if (count <= 0) break;
      received_.append(bytes, static_cast<std::size_t>(count));
    }
    send(connection, answer_.data(), answer_.size(), MSG_NOSIGNAL);
    close(connection);
  }
  bool isWhole() const {
    const std::string name = "Content-Length: ";
    const std::size_t at = received_.find(name);
    const std::size_t end = received_.find("\r\n\r\n");
    if (at == std::string::npos || end == std::string::npos) return false;
    std::size_t length = 0;
    std::from_chars(received_.data() + at + name.size(), received_.data() + end, length);
    return received_.size() >= end + 4 + length;
  }

  std::string answer_;
  std::string received_;
  std::string address_;
  int listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::thread thread_;
};

}  // namespace test
