// A running studio, and a client that sends exactly what a test says.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

#include <fstream>
#include <map>
#include <optional>

#include "cli/command.h"
#include "support/property_lists.h"

namespace test {

struct Reply {
  int status = 0;  ///< 0 if there was none
  std::map<std::string, std::string> headers;
  std::string body;
  Json json() const { return Json::parse(body, nullptr, false); }
};

/// A connection to 127.0.0.1.
class Client {
 public:
  explicit Client(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    const timeval patience{kPatience.count(), 0};
    setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    isConnected_ = connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  }
  ~Client() { close(socket_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  bool isConnected() const { return isConnected_; }
  bool send(const std::string& text) const {
    return ::send(socket_, text.data(), text.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(text.size());
  }
  /// Everything until the other end closes.
  std::string readAll() const {
    std::string text;
    char block[1 << 14];
    for (ssize_t count = 0; (count = recv(socket_, block, sizeof block, 0)) > 0;)
      text.append(block, static_cast<std::size_t>(count));
    return text;
  }
  Reply reply() const {
    const std::string text = readAll();
    Reply reply;
    if (!text.starts_with("HTTP/1.1 ")) return reply;
    reply.status = std::atoi(text.c_str() + 9);
    const std::size_t end = text.find("\r\n\r\n");
    for (std::size_t at = text.find("\r\n"); at < end;) {
      const std::size_t next = text.find("\r\n", at + 2);
      const std::string line = text.substr(at + 2, next - at - 2);
      if (const std::size_t colon = line.find(": "); colon != line.npos)
        reply.headers[line.substr(0, colon)] = line.substr(colon + 2);
      at = next;
    }
    if (end != text.npos) reply.body = text.substr(end + 4);
    return reply;
  }

 private:
  int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  bool isConnected_ = false;
};

class StudioTest : public CommandTest {
 protected:
  /// Its first line is the address.
  void start(Words words = {}) {
    words.insert(words.begin(), {"studio", "--no-browser"});
    command.emplace(words);
    ASSERT_TRUE(command->waitFor("\n")) << command->error;
    address = command->out.substr(0, command->out.find('\n'));
    ASSERT_TRUE(address.starts_with("http://127.0.0.1:")) << address;
    port = std::atoi(address.c_str() + 17);
    path = address.substr(address.find('/', 17));
    host = "127.0.0.1:" + std::to_string(port);
  }

  Reply request(const std::string& method, const std::string& target,
                const std::string& headers = "", const std::string& body = "") const {
    const Client client(port);
    client.send(method + " " + target + " HTTP/1.1\r\n" + headers +
                "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    return client.reply();
  }
  std::string ownHost() const { return "Host: " + host + "\r\n"; }
  /// As the page asks.
  Reply get(const std::string& what) const { return request("GET", path + what, ownHost()); }
  Reply post(const std::string& what, const Json& body) const {
    return request("POST", path + what, ownHost(), body.dump());
  }
  Json theme() const { return get("theme").json(); }
  Reply change(const Json& changes, long revision, const std::string& page = "page") const {
    return post("changes", {{"page", page}, {"revision", revision}, {"changes", changes}});
  }
  /// Waits until the theme's member has that value.
  bool becomes(const std::string& member, const Json& value) const {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    Json now = theme();
    while (now.value(Json::json_pointer(member), Json()) != value) {
      if (std::chrono::steady_clock::now() > end) return false;
      now = get("news?version=" + std::to_string(now["version"].get<long>())).json();
    }
    return true;
  }

  std::string file() const { return folder.path() + "/theme.plist"; }
  /// As an editor does it: in one step.
  void write(const std::string& entries) const {
    const std::string other = folder.path() + "/other";
    std::ofstream(other) << "<plist version=\"1.0\"><dict>" << entries << "</dict></plist>";
    std::filesystem::rename(other, file());
  }
  static std::string color(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
  }

  std::optional<Command> command;
  std::string address, path, host;
  int port = 0;
};

}  // namespace test
