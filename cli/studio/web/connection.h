// One client's connection: its bytes and its time are limited, however slowly it reads or writes.
#pragma once

#include <array>
#include <chrono>

#include <httplib.h>

namespace varnix::cli::web {

class Connection final : public httplib::Stream {
 public:
  explicit Connection(int socket) : socket_(socket) {}

  /// The head of a request may have 64 KiB. So many more bytes may be read.
  void allowBody(std::size_t length) { allowed_ += length; }
  /// Says that nothing more will be written, and takes a little of what the client still sends, so
  /// that it reads the answer before it learns that nobody listens any more.
  void finish();

  bool is_readable() const override;
  bool is_writable() const override;
  ssize_t read(char* to, std::size_t size) override;
  ssize_t write(const char* from, std::size_t size) override;
  void get_remote_ip_and_port(std::string& address, int& port) const override;
  void get_local_ip_and_port(std::string& address, int& port) const override;
  socket_t socket() const override { return socket_; }

 private:
  using Clock = std::chrono::steady_clock;

  bool await(short event, Clock::time_point end) const;

  int socket_;
  std::array<char, 1 << 14> buffer_{};
  std::size_t begin_ = 0, end_ = 0;
  std::size_t allowed_ = 64 << 10;
  Clock::time_point readEnd_ = Clock::now() + std::chrono::seconds(10);
  Clock::time_point writeEnd_{};  ///< set by the first write
};

}  // namespace varnix::cli::web
