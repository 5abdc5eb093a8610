// The server, and what the module offers.
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

#include "export.h"
#include "studio/web/connection.h"
#include "studio/web/gate.h"
#include "studio/web/threads.h"
#include "studio/web/web.h"

namespace varnix::cli::web {

namespace {

constexpr char kTooMany[] = "HTTP/1.1 503 Service Unavailable\r\nConnection: close\r\n\r\n";

/// The connection that this thread serves.
thread_local Connection* served = nullptr;

/// The page loads nothing from elsewhere, and no other page shows it or learns its address.
httplib::Headers headers() {
  return {{"Cache-Control", "no-store"},
          {"Content-Security-Policy",
           "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob: data:; "
           "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
          {"Cross-Origin-Opener-Policy", "same-origin"},
          {"Cross-Origin-Resource-Policy", "same-origin"},
          {"Referrer-Policy", "no-referrer"},
          {"X-Content-Type-Options", "nosniff"}};
}

class HttpServer final : public httplib::Server, public web::Server {
 public:
  explicit HttpServer(Site site) : site_(std::move(site)) {
    new_task_queue = [] { return new Threads(kMostConnections); };
    set_default_headers(headers());
    set_tcp_nodelay(true);
    // By default it would share its port with another server of the same user.
    set_socket_options([](socket_t socket) {
      const int yes = 1;
      setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
      response.status = refusal(request, site_.secret, port_);
      if (response.status != 0) return HandlerResponse::Handled;
      response.status = -1;
      served->allowBody(kLargestBody);
      return HandlerResponse::Unhandled;
    });
    set_expect_100_continue_handler([this](const httplib::Request& request, httplib::Response&) {
      const int status = refusal(request, site_.secret, port_);
      return status == 0 ? 100 : status;
    });
    set_exception_handler([](const httplib::Request&, httplib::Response& response,
                             const std::exception_ptr&) { response.status = 500; });
    auto answer = [this](const httplib::Request& request, httplib::Response& response) {
      web::Request asked{request.method, pathBehind(request.path, site_.secret), {}, request.body};
      for (const auto& [name, value] : request.params) asked.query.emplace(name, value);
      web::Response given = site_.answer(asked);
      response.status = given.status;
      if (!given.tag.empty()) response.set_header("ETag", '"' + given.tag + '"');
      response.set_content(std::move(given.body), given.type);
    };
    for (const auto add :
         {&HttpServer::getAny, &HttpServer::postAny, &HttpServer::putAny, &HttpServer::deleteAny})
      (this->*add)(answer);
  }

  ~HttpServer() override {
    stop();
    shutdownAll(SHUT_RD);
    {
      // For the last answers.
      std::unique_lock lock(mutex_);
      closed_.wait_for(lock, std::chrono::milliseconds(500), [this] { return sockets_.empty(); });
    }
    shutdownAll(SHUT_RDWR);
    if (listening_.joinable()) listening_.join();
  }

  bool begin() {
    constexpr char kAddress[] = "127.0.0.1";
    if (site_.port == 0) port_ = bind_to_any_port(kAddress);
    else if (bind_to_port(kAddress, site_.port)) port_ = site_.port;
    if (port_ <= 0) return false;
    // The default queue holds five connections.
    ::listen(svr_sock_, SOMAXCONN);
    listening_ = std::thread([this] { listen_after_bind(); });
    // Before that, stopping it would have no effect.
    while (!is_running()) std::this_thread::yield();
    return true;
  }

  int port() const override { return port_; }

 private:
  static constexpr char kAnything[] = ".*";
  void getAny(const Handler& handler) { Get(kAnything, handler); }
  void postAny(const Handler& handler) { Post(kAnything, handler); }
  void putAny(const Handler& handler) { Put(kAnything, handler); }
  void deleteAny(const Handler& handler) { Delete(kAnything, handler); }

  void shutdownAll(int how) {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
    for (const int socket : sockets_) ::shutdown(socket, how);
  }

  bool process_and_close_socket(socket_t socket) override {
    if (Threads::isTooMany()) {
      send(socket, kTooMany, sizeof kTooMany - 1, MSG_NOSIGNAL | MSG_DONTWAIT);
      close(socket);
      return false;
    }
    {
      const std::lock_guard lock(mutex_);
      if (isEnding_) ::shutdown(socket, SHUT_RDWR);
      sockets_.insert(socket);
    }
    Connection connection(socket);
    served = &connection;
    bool isClosed = true;
    const bool isDone = process_request(connection, true, isClosed, [](httplib::Request& request) {
      // Compressing takes longer than sending.
      request.headers.erase("Accept-Encoding");
    });
    served = nullptr;
    connection.finish();
    const std::lock_guard lock(mutex_);
    sockets_.erase(socket);
    close(socket);
    closed_.notify_all();
    return isDone;
  }

  Site site_;
  int port_ = 0;
  std::mutex mutex_;
  std::condition_variable closed_;
  std::set<int> sockets_;
  bool isEnding_ = false;
  std::thread listening_;
};

std::unique_ptr<web::Server> start(Site site) {
  auto server = std::make_unique<HttpServer>(std::move(site));
  if (!server->begin()) return nullptr;
  return server;
}

constexpr Module kModule{start};

}  // namespace

}  // namespace varnix::cli::web

extern "C" HOST_EXPORT const varnix::cli::web::Module* varnix_studio() noexcept {
  return &varnix::cli::web::kModule;
}
