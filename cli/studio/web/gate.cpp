#include "studio/web/gate.h"

#include <charconv>
#include <string_view>

#include "studio/web/web.h"

namespace varnix::cli::web {

namespace {

/// Takes as long for a wrong secret as for the right one.
bool isSame(std::string_view given, std::string_view secret) {
  if (given.size() != secret.size()) return false;
  unsigned char differences = 0;
  for (std::size_t i = 0; i < secret.size(); ++i)
    differences |= static_cast<unsigned char>(given[i] ^ secret[i]);
  return differences == 0;
}

bool hasSecret(const std::string& path, const std::string& secret) {
  return path.size() > secret.size() + 1 && path[0] == '/' && path[secret.size() + 1] == '/' &&
         isSame(std::string_view(path).substr(1, secret.size()), secret);
}

/// Whether a window goes to the page itself. The file that the browser is given leads there, and a
/// browser says of that what it says of another site. Who knows the secret may link to the page.
bool opensPage(const httplib::Request& request) {
  return request.method == "GET" && request.path.find('/', 1) == request.path.size() - 1 &&
         !request.has_header("Origin") &&
         request.get_header_value("Sec-Fetch-Mode") == "navigate" &&
         request.get_header_value("Sec-Fetch-Dest") == "document";
}

/// A page of another site can lead its own name to this machine, but cannot change what the browser
/// says about that name.
bool isOwnPage(const httplib::Request& request, int port) {
  const std::string host = "127.0.0.1:" + std::to_string(port);
  if (request.get_header_value_count("Host") != 1 || request.get_header_value("Host") != host)
    return false;
  const std::size_t origins = request.get_header_value_count("Origin");
  if (origins > 1 || (origins == 1 && request.get_header_value("Origin") != "http://" + host))
    return false;
  if (!request.has_header("Sec-Fetch-Site")) return true;
  const std::string from = request.get_header_value("Sec-Fetch-Site");
  return from == "same-origin" || from == "none" || opensPage(request);
}

/// 0 for a body that may be read.
int bodyRefusal(const httplib::Request& request) {
  // The length is then unknown, or that of something else.
  if (request.has_header("Transfer-Encoding")) return 411;
  if (request.has_header("Content-Encoding")) return 415;
  if (!request.has_header("Content-Length")) return 0;
  const std::string text = request.get_header_value("Content-Length");
  std::size_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  if (request.get_header_value_count("Content-Length") != 1 || error != std::errc() ||
      end != text.data() + text.size())
    return error == std::errc::result_out_of_range ? 413 : 400;
  return length > kLargestBody ? 413 : 0;
}

}  // namespace

int refusal(const httplib::Request& request, const std::string& secret, int port) {
  if (!isOwnPage(request, port)) return 403;
  if (!hasSecret(request.path, secret)) return 404;
  return bodyRefusal(request);
}

std::string pathBehind(const std::string& path, const std::string& secret) {
  return path.substr(secret.size() + 2);
}

}  // namespace varnix::cli::web
