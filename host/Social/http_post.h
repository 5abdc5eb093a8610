// Posts a form to a server on this machine.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace host {

struct HttpPost {
  std::string host;           ///< the name that the request is meant for
  std::string path;           ///< escaped
  std::string authorization;  ///< the value of that header; may be empty
  std::vector<std::pair<std::string, std::string>> form;
};

struct HttpAnswer {
  int status;
  std::string body;
};

/// Sends it to "127.0.0.1:PORT" or "localhost:PORT" and waits for the answer, a few seconds at
/// most. Nothing for any other server, or if there is no answer.
std::optional<HttpAnswer> sendToLoopback(const std::string& server, const HttpPost& post);

}  // namespace host
