// varnix run: a hosted process that lives.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Foundation/log.h"
#include "Foundation/run_loop.h"
#include "change_text.h"
#include "commands.h"
#include "errors.h"
#include "icon_check.h"
#include "objc/autorelease_pool.h"
#include "process_choice.h"
#include "runtime/runtime.h"
#include "script.h"

namespace varnix::cli {

namespace {

struct RunArguments {
  ProcessChoice process;
  std::optional<double> seconds;
  bool trace = false;
  std::vector<std::string> receivers;  ///< classes whose messages are printed
};

constexpr double kLongest = 1e9;

volatile std::sig_atomic_t endedBy = 0;

void endBySignal(int number) {
  endedBy = number;
  host::MainRunLoop::instance().stop();  // stores a flag and writes to a descriptor
}

/// An interrupted process takes its temporary container with it.
void endOnSignals() {
  host::MainRunLoop::instance();
  struct sigaction action = {};
  action.sa_handler = endBySignal;
  for (int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
}

/// Whether standard input can close later: a file or /dev/null has nobody at its other end.
bool inputCanClose() {
  struct stat status = {};
  if (fstat(STDIN_FILENO, &status) != 0) return false;
  return S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || isatty(STDIN_FILENO) == 1;
}

void endWithInput() {
  auto& loop = host::MainRunLoop::instance();
  loop.watch(STDIN_FILENO, [&loop] {
    char ignored[4096];
    const ssize_t length = read(STDIN_FILENO, ignored, sizeof ignored);
    if (length < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (length <= 0) {
      loop.unwatch(STDIN_FILENO);
      loop.stop();
    }
  });
}

void live(const RunArguments& arguments) {
  auto& loop = host::MainRunLoop::instance();
  const auto& script = arguments.process.script;
  if (script && !arguments.seconds) return loop.drain();
  // A script has read it to its end.
  if (script != "-" && inputCanClose()) {
    endWithInput();
  } else if (!arguments.seconds) {
    return loop.drain();
  }
  if (!arguments.seconds) return loop.run();
  loop.runFor(std::chrono::milliseconds(std::llround(*arguments.seconds * 1000)));
}

void printMessages(const std::vector<std::string>& classes) {
  if (classes.empty()) return;
  host::runtime::observeMessages([&classes](const host::runtime::Message& message) {
    const auto isMeant = [&](Class cls) {
      return std::find(classes.begin(), classes.end(), class_getName(cls)) != classes.end();
    };
    Class cls = message.cls;
    while (cls != nullptr && !isMeant(cls)) cls = class_getSuperclass(cls);
    if (cls != nullptr) std::cout << messageText(message) + '\n' << std::flush;
  });
}

int run(RunArguments& arguments) {
  if (const auto seconds = arguments.seconds; seconds && !(*seconds >= 0 && *seconds <= kLongest)) {
    throw UsageError("unusable time", std::to_string(*seconds));
  }
  const host::ProcessOptions options = arguments.process.prepare();
  host::printLog(true);
  endOnSignals();
  objc::AutoreleasePool pool;
  host::startProcess(options);
  warnOfMissing();
  checkIcons(options.icons);
  std::optional<Stage> stage;
  if (arguments.process.script) stage.emplace();
  if (arguments.trace) {
    host::runtime::observeChanges([](const host::runtime::Change& change) {
      std::cout << changeText(change) + '\n' << std::flush;
    });
  }
  printMessages(arguments.receivers);
  if (!arguments.process.noLibrary) host::loadLibrary(host::defaultLibraryPath());
  for (const std::string& file : arguments.process.extensions) host::loadLibrary(file);
  if (stage && endedBy == 0) {
    runScript(*arguments.process.script, *stage, [](const Json& value) {
      std::cout << dump(value) + '\n' << std::flush;
    });
  }
  if (endedBy == 0) live(arguments);
  host::runtime::observeChanges({});
  host::runtime::observeMessages({});
  return endedBy == 0 ? 0 : 128 + endedBy;
}

}  // namespace

Command runCommand() {
  auto arguments = std::make_shared<RunArguments>();
  Command command{
      .name = "run",
      .summary = "Run a hosted process that loads the library",
      .options = arguments->process.options(),
      .notes =
          "It ends when the time is over or standard input closes; a file or /dev/null counts as "
          "closed,\nunless there is a time. With a script it ends with the script, unless "
          "there is a time.\n\n" +
          scriptHelp(),
      .run = [arguments] { return run(*arguments); }};
  command.options.push_back({.name = "--for",
                             .value = "SECONDS",
                             .target = &arguments->seconds,
                             .meaning = "End after this time"});
  command.options.push_back(
      {.name = "--trace",
       .target = &arguments->trace,
       .meaning = "Print every method that is added or replaced as it happens"});
  command.options.push_back(
      {.name = "--messages",
       .value = "CLASS",
       .target = &arguments->receivers,
       .meaning = "Print every message to this class and its instances as it is sent; repeatable"});
  return command;
}

}  // namespace varnix::cli
