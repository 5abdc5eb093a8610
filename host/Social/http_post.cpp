#include "Social/http_post.h"

#include <curl/curl.h>

#include <memory>
#include <string_view>

namespace host {

namespace {

constexpr std::size_t kLongestAnswer = std::size_t{1} << 20U;
constexpr long kSeconds = 5;

using Session = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;

/// Header lines, stored as the library needs them.
class Headers {
 public:
  Headers() = default;
  ~Headers() { curl_slist_free_all(list_); }
  Headers(const Headers&) = delete;
  Headers& operator=(const Headers&) = delete;

  /// Removes line ends, which would begin another header.
  void add(const std::string& name, std::string value) {
    std::erase_if(value, [](char c) { return c == '\r' || c == '\n'; });
    list_ = curl_slist_append(list_, (name + ": " + value).c_str());
  }
  curl_slist* get() const { return list_; }

 private:
  curl_slist* list_ = nullptr;
};

/// A name of this machine, a colon and digits; the library checks the port's range.
bool isLoopback(std::string_view server) {
  const std::size_t colon = server.rfind(':');
  if (colon == std::string_view::npos) return false;
  const std::string_view name = server.substr(0, colon);
  const std::string_view port = server.substr(colon + 1);
  return (name == "127.0.0.1" || name == "localhost") && !port.empty() &&
         port.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string escaped(CURL* session, const std::string& text) {
  const std::unique_ptr<char, decltype(&curl_free)> bytes(
      curl_easy_escape(session, text.data(), static_cast<int>(text.size())), &curl_free);
  return bytes == nullptr ? "" : bytes.get();
}

std::string formOf(CURL* session, const HttpPost& post) {
  std::string form;
  for (const auto& [name, value] : post.form) {
    if (!form.empty()) form += '&';
    form += escaped(session, name) + "=" + escaped(session, value);
  }
  return form;
}

/// An answer longer than the limit ends the transfer.
std::size_t collect(const char* bytes, std::size_t size, std::size_t count, void* body) {
  auto& collected = *static_cast<std::string*>(body);
  if (collected.size() + size * count > kLongestAnswer) return 0;
  collected.append(bytes, size * count);
  return size * count;
}

}  // namespace

std::optional<HttpAnswer> sendToLoopback(const std::string& server, const HttpPost& post) {
  if (!isLoopback(server)) return {};
  const Session session(curl_easy_init(), &curl_easy_cleanup);
  if (session == nullptr) return {};
  Headers headers;
  headers.add("Host", post.host);
  if (!post.authorization.empty()) headers.add("Authorization", post.authorization);
  const std::string url = "http://" + server + post.path;
  const std::string form = formOf(session.get(), post);
  HttpAnswer answer{};
  long status = 0;
  curl_easy_setopt(session.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(session.get(), CURLOPT_NOPROXY,
                   "*");  // never through a proxy, which would leave this machine
  curl_easy_setopt(session.get(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(session.get(), CURLOPT_TIMEOUT, kSeconds);
  curl_easy_setopt(session.get(), CURLOPT_HTTPHEADER, headers.get());
  curl_easy_setopt(session.get(), CURLOPT_POSTFIELDS, form.c_str());
  curl_easy_setopt(session.get(), CURLOPT_WRITEFUNCTION, &collect);
  curl_easy_setopt(session.get(), CURLOPT_WRITEDATA, &answer.body);
  if (curl_easy_perform(session.get()) != CURLE_OK) return {};
  curl_easy_getinfo(session.get(), CURLINFO_RESPONSE_CODE, &status);
  answer.status = static_cast<int>(status);
  return answer;
}

}  // namespace host
