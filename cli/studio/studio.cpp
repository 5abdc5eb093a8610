// varnix studio: a page on which a theme is designed and seen.
#include <poll.h>
#include <sys/random.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "commands.h"
#include "common/errors.h"
#include "common/interruption.h"
#include "common/module.h"
#include "common/temporary_container.h"
#include "studio/browser.h"
#include "studio/material_store.h"
#include "studio/routes.h"

namespace varnix::cli {

namespace {

struct StudioArguments {
  std::optional<std::string> file;
  int port = 0;
  bool opensNoBrowser = false;
};

constexpr ModuleName<web::Module> kWebModule{web::kModuleFile, web::kModuleEntry,
                                             "the studio's web server"};

constexpr int kLargestPort = 65535;
/// How long the page may be closed.
constexpr std::chrono::seconds kAbsence{60};

std::string secret() {
  std::array<unsigned char, 16> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
    throw Failure("cannot begin", "no random numbers");
  std::string text;
  for (const unsigned char byte : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", byte);
    text += digits;
  }
  return text;
}

/// Knows whether a page is there.
class Presence {
 public:
  class Request {
   public:
    explicit Request(Presence& presence) : presence_(presence) { ++presence_.count_; }
    ~Request() {
      presence_.last_ = Clock::now().time_since_epoch().count();
      --presence_.count_;
    }
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

   private:
    Presence& presence_;
  };

  bool isGone() const {
    const auto last = last_.load();
    return last != 0 && count_ == 0 &&
           Clock::now() - Clock::time_point(Clock::duration(last)) > kAbsence;
  }

 private:
  using Clock = std::chrono::steady_clock;
  std::atomic<int> count_ = 0;
  std::atomic<Clock::rep> last_ = 0;  ///< 0 until the first request has ended
};

void awaitEnd(const Presence& presence) {
  constexpr int kLookEvery = 1000;
  while (!presence.isGone()) {
    pollfd ready{interruptionDescriptor(), POLLIN, 0};
    poll(&ready, 1, kLookEvery);
    throwIfInterrupted();
  }
}

int runStudio(const StudioArguments& arguments) {
  if (arguments.port < 0 || arguments.port > kLargestPort)
    throw UsageError("not a port", std::to_string(arguments.port));
  noteInterruptions();
  Session session(arguments.file);
  // It starts processes, which is only possible before there are threads.
  OtherTheme other;
  Painter painter([&](bool isOther) { return isOther ? other.shown() : session.shown(); });
  const TemporaryContainer temporary;
  MaterialStore materials(arguments.file ? *arguments.file + ".materials"
                                         : temporary.root() + "/materials");
  painter.use(materials.all());
  session.with([&](Theme& theme) { theme.beginWith(materials.names()); });
  Reader reader(session, painter);
  const Workplace workplace{session, painter,          materials,     reader,
                            other,   temporary.root(), arguments.file};
  session.begin();
  Presence presence;
  const std::string word = secret();
  const auto server =
      loadModule(kWebModule).start({arguments.port, word, [&](const web::Request& request) {
                                      const Presence::Request here(presence);
                                      return answerPage(request, workplace);
                                    }});
  if (server == nullptr)
    throw Failure("cannot listen", "port " + std::to_string(arguments.port) + " of 127.0.0.1");
  // Before the server stops, since it waits for those who wait for news.
  struct End {
    Session& session;
    ~End() { session.end(); }
  } const end{session};
  const std::string address =
      "http://127.0.0.1:" + std::to_string(server->port()) + '/' + word + '/';
  std::cout << address << std::endl;
  std::optional<AddressFile> file;
  if (!arguments.opensNoBrowser && hasDesktop()) openFile(file.emplace(address).path());
  awaitEnd(presence);
  return 0;
}

}  // namespace

Command studioCommand() {
  auto arguments = std::make_shared<StudioArguments>();
  return {.name = "studio",
          .summary = "Open a page on which to design a theme and see it",
          .options = {{.name = "FILE",
                       .target = &arguments->file,
                       .meaning = "The settings file; without it nothing is saved",
                       .completes = Completes::files,
                       .isOptional = true},
                      {.name = "--port",
                       .value = "NUMBER",
                       .target = &arguments->port,
                       .meaning = "The port of 127.0.0.1; a free one"},
                      {.name = "--no-browser",
                       .target = &arguments->opensNoBrowser,
                       .meaning = "Only print the address"}},
          .notes =
              "The first line is the page's address, which nobody else should get: whoever knows\n"
              "it can change the theme. It ends with Ctrl-C, with the terminal, or when the page\n"
              "has been closed for a minute.",
          .run = [arguments] { return runStudio(*arguments); }};
}

}  // namespace varnix::cli
