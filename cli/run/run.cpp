// varnix run: a hosted process that keeps running.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Foundation/log.h"
#include "Foundation/run_loop.h"
#include "commands.h"
#include "common/class_names.h"
#include "common/death_report.h"
#include "common/errors.h"
#include "common/icon_check.h"
#include "common/interruption.h"
#include "common/nearest.h"
#include "common/process_choice.h"
#include "common/warning.h"
#include "objc/autorelease_pool.h"
#include "run/change_text.h"
#include "runtime/runtime.h"
#include "script/script.h"

namespace varnix::cli {

namespace {

struct RunArguments {
  ProcessChoice process;
  std::optional<double> seconds;
  bool trace = false;
  std::vector<std::string> receivers;  ///< classes whose messages to print
};

using Clock = std::chrono::steady_clock;

constexpr double kLongest = 1e9;

/// Ends the loop, so that an interrupted process can remove its temporary container.
void endOnInterruption() {
  noteInterruptions();
  auto& loop = host::MainRunLoop::instance();
  loop.watch(interruptionDescriptor(), [&loop] { loop.stop(); });
}

/// Whether standard input can close later: a file and /dev/null have no other end that could.
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

void runUntil(host::MainRunLoop& loop, Clock::time_point end) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
  loop.runFor(std::max(left, std::chrono::milliseconds::zero()));
}

void live(const RunArguments& arguments, const Deadline& end) {
  auto& loop = host::MainRunLoop::instance();
  const auto& script = arguments.process.script;
  if (script && !end) return loop.drain();
  // A script from standard input has already read it to its end.
  if (script != "-" && inputCanClose()) {
    endWithInput();
  } else if (!end) {
    return loop.drain();
  }
  if (!end) return loop.run();
  runUntil(loop, *end);
}

Deadline endOf(const RunArguments& arguments) {
  if (!arguments.seconds) return {};
  return Clock::now() + std::chrono::milliseconds(std::llround(*arguments.seconds * 1000));
}

/// Ends the observation, which refers to the command's arguments.
struct Observation {
  Observation() = default;
  ~Observation() {
    host::runtime::observeChanges({});
    host::runtime::observeMessages({});
  }
  Observation(const Observation&) = delete;
  Observation& operator=(const Observation&) = delete;
};

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

/// A class may be loaded later, but a misspelt one never appears.
void warnOfUnknown(const std::vector<std::string>& classes) {
  for (const std::string& name : classes) {
    if (objc_getClass(name.c_str()) == nullptr)
      warn("no such class yet: " + name + didYouMean(name, classNames()));
  }
}

int run(RunArguments& arguments) {
  if (const auto seconds = arguments.seconds; seconds && !(*seconds >= 0 && *seconds <= kLongest)) {
    throw UsageError("unusable time", std::to_string(*seconds));
  }
  endOnInterruption();
  const host::ProcessOptions options = arguments.process.prepare(RootUse::changes);
  host::printLog(true);
  objc::AutoreleasePool pool;
  tellOfDeath(STDERR_FILENO, Telling::sentence);
  removeOnDeath(arguments.process.temporaryRoot());
  host::startProcess(options);
  warnOfMissing();
  checkIcons(options.icons);
  std::optional<Stage> stage;
  if (arguments.process.script) stage.emplace();
  const Observation observation;
  if (arguments.trace) {
    host::runtime::observeChanges([](const host::runtime::Change& change) {
      std::cout << changeText(change) + '\n' << std::flush;
    });
  }
  printMessages(arguments.receivers);
  for (const std::string& file : arguments.process.earlierExtensions) loadNamed(file);
  if (!arguments.process.noLibrary) loadNamed(host::defaultLibraryPath());
  for (const std::string& file : arguments.process.extensions) loadNamed(file);
  warnOfUnknown(arguments.receivers);
  throwIfInterrupted();
  const Deadline end = endOf(arguments);
  if (stage) {
    runScript({.file = *arguments.process.script, .deadline = end}, *stage, [](const Json& value) {
      std::cout << dump(value) + '\n' << std::flush;
    });
  }
  live(arguments, end);
  throwIfInterrupted();
  return 0;
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
                             .meaning = "End after this time, also in the middle of a script"});
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
