// The varnix command.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "common/errors.h"
#include "common/interruption.h"
#include "common/warning.h"
#include "parser.h"

namespace {

int complain(const std::string& message, int status) {
  varnix::cli::warn(message);
  return status;
}

/// Otherwise the next file to be opened would get the number of a closed standard descriptor.
/// Writing to it still fails.
void openStandardStreams() {
  for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", O_RDONLY);
  }
}

varnix::cli::Command program() {
  using namespace varnix::cli;
  Command all{
      .name = "varnix",
      .summary = "Dyes the interface of hosted processes, and shows what changed.",
      .commands = {settingsCommand(), runCommand(), inspectCommand(), pickCommand(), paneCommand(),
                   previewCommand(), studioCommand(), themeCommand(), completionCommand(program),
                   manCommand(program)},
      .notes =
          "Settings lie under a container root, the folder that stands for the device's \"/\": "
          "--root,\nelse $VARNIX_ROOT, else a folder under your data directory.\n\n"
          "  varnix settings set global_color '#1e88e5'\n"
          "  varnix inspect --bundle com.example.notes"};
  all.commands.push_back(helpCommand(all));
  return all;
}

int run(int argc, char** argv) {
  const int status = varnix::cli::parse(program(), {argv + std::min(argc, 1), argv + argc})();
  std::cout.flush();
  varnix::cli::throwIfInterrupted();
  if (!std::cout) throw varnix::cli::Failure("cannot write", "standard output");
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  openStandardStreams();
  try {
    return run(argc, argv);
  } catch (const varnix::cli::Interrupted& end) {
    return 128 + end.signal;
  } catch (const varnix::cli::Death& death) {
    return complain(death.what(), 128 + death.signal);
  } catch (const varnix::cli::UsageError& error) {
    return complain(error.what(), 2);
  } catch (const std::exception& error) {
    return complain(error.what(), 1);
  }
}
