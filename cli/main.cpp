// The varnix command.
#include <iostream>

#include "commands.h"
#include "errors.h"
#include "parse_error.h"

namespace {

int complain(const std::string& message, int status) {
  std::cout.flush();
  std::cerr << "varnix: " << message << '\n';
  return status;
}

int runCommand(int argc, char** argv) {
  CLI::App app{"Dyes the interface of hosted processes, and shows what changed.", "varnix"};
  app.set_version_flag("--version", "varnix " VARNIX_VERSION);
  app.require_subcommand(0, 1);
  varnix::cli::Action chosen;
  varnix::cli::addSettings(app, chosen);
  varnix::cli::addRun(app, chosen);
  varnix::cli::addInspect(app, chosen);
  // Last: a subcommand takes over the footer that its parent has.
  app.footer(
      "Settings lie under a container root, the folder that stands for the device's \"/\": "
      "--root,\nelse $VARNIX_ROOT, else a folder under your data directory.\n\n"
      "  varnix settings set global_color '#1e88e5'\n"
      "  varnix inspect --bundle com.example.notes");
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& answer) {
    return app.exit(answer);  // help or version
  } catch (const CLI::ParseError& error) {
    return complain(varnix::cli::messageFor(error), 2);
  }
  if (!chosen) throw varnix::cli::UsageError("missing command", "see varnix --help");
  const int status = chosen();
  std::cout.flush();
  if (!std::cout) throw varnix::cli::Failure("cannot write", "standard output");
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return runCommand(argc, argv);
  } catch (const varnix::cli::UsageError& error) {
    return complain(error.what(), 2);
  } catch (const std::exception& error) {
    return complain(error.what(), 1);
  }
}
