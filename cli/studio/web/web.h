// The studio's web server, a module that only this command loads. It lets nobody in who does not
// know the secret, whatever the requests are for.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace varnix::cli::web {

/// A request that was let in.
struct Request {
  std::string method;
  std::string path;  ///< what follows the secret: "", "page.js", "picture/home"
  std::map<std::string, std::string> query;
  std::string body;
};

struct Response {
  int status = 200;
  std::string type = "application/json";
  std::string body = {};
  std::string tag = {};  ///< the same for the same body; may be empty
};

struct Site {
  int port = 0;        ///< 0 for a free one
  std::string secret;  ///< the first part of every path
  /// Called on several threads at once. An exception becomes status 500, without its text.
  std::function<Response(const Request&)> answer;
};

/// Ends open connections and stops when it is destroyed. What `answer` waits for must end by then.
class Server {
 public:
  Server() = default;
  virtual ~Server() = default;
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  virtual int port() const = 0;
};

inline constexpr std::size_t kLargestBody = 16 << 20;
inline constexpr std::size_t kMostConnections = 48;

/// What the module offers.
struct Module {
  /// Listens on 127.0.0.1. Nothing if the port cannot be had.
  std::unique_ptr<Server> (*start)(Site site);
};

inline constexpr char kModuleFile[] = "libvarnix-studio.so";
inline constexpr char kModuleEntry[] = "varnix_studio";
using ModuleEntry = const Module* (*)();

}  // namespace varnix::cli::web
