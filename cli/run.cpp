// varnix run: a hosted process that lives.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <iostream>
#include <memory>
#include <optional>

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

struct Arguments {
  ProcessChoice process;
  double seconds = 0;
  bool isLimited = false;
  bool trace = false;
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

void live(const Arguments& arguments) {
  auto& loop = host::MainRunLoop::instance();
  const auto& script = arguments.process.script;
  if (script && !arguments.isLimited) return loop.drain();
  // A script has read it to its end.
  if (script != "-" && inputCanClose()) {
    endWithInput();
  } else if (!arguments.isLimited) {
    return loop.drain();
  }
  if (!arguments.isLimited) return loop.run();
  loop.runFor(std::chrono::milliseconds(std::llround(arguments.seconds * 1000)));
}

int run(Arguments& arguments) {
  if (!(arguments.seconds >= 0 && arguments.seconds <= kLongest)) {
    throw UsageError("unusable time", std::to_string(arguments.seconds));
  }
  const host::ProcessOptions options = arguments.process.prepare();
  host::printLog(true);
  endOnSignals();
  objc::AutoreleasePool pool;
  host::startProcess(options);
  checkIcons(options.icons);
  std::optional<Stage> stage;
  if (arguments.process.script) stage.emplace();
  if (arguments.trace) {
    host::runtime::observeChanges([](const host::runtime::Change& change) {
      std::cout << changeText(change) + '\n' << std::flush;
    });
  }
  if (!arguments.process.noLibrary) host::loadLibrary(host::defaultLibraryPath());
  for (const std::string& file : arguments.process.extensions) host::loadLibrary(file);
  if (stage && endedBy == 0) {
    runScript(*arguments.process.script, *stage, [](const Json& value) {
      std::cout << dump(value) + '\n' << std::flush;
    });
  }
  if (endedBy == 0) live(arguments);
  host::runtime::observeChanges({});
  return endedBy == 0 ? 0 : 128 + endedBy;
}

}  // namespace

void addRun(CLI::App& app, Action& chosen) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand(
      "run",
      "Run a hosted process that loads the library, until the time is over or standard\n"
      "input closes (a file or /dev/null as standard input counts as closed, unless there is a "
      "time); with a script, until its end where there is no time");
  arguments->process.addTo(*command);
  CLI::Option* limit = command->add_option("--for", arguments->seconds, "End after this time");
  limit->type_name("SECONDS");
  command->add_flag("--trace", arguments->trace,
                    "Print every method that is added or replaced as it happens");
  command->callback([arguments, limit, &chosen] {
    arguments->isLimited = limit->count() > 0;
    chosen = [arguments] { return run(*arguments); };
  });
}

}  // namespace varnix::cli
