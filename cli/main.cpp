// The varnix command.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "commands.h"
#include "errors.h"
#include "parse_error.h"

namespace {

int complain(const std::string& message, int status) {
  std::cout.flush();
  std::cerr << "varnix: " << message << '\n';
  return status;
}

/// A descriptor that was closed would go to the next file that is opened. Writing to it still
/// fails.
void openStandardStreams() {
  for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", O_RDONLY);
  }
}

/// The words in the parser's order, last first. It would take the next word as the value of
/// "--option=", which is an empty one.
std::vector<std::string> wordsReversed(int argc, char** argv) {
  std::vector<std::string> words;
  bool areOptions = true;
  for (const char* argument : std::span(argv + 1, argv + std::max(argc, 1))) {
    std::string word = argument;
    if (word == "--") areOptions = false;
    const bool isEmpty = areOptions && word.starts_with("--") && word.find('=') == word.size() - 1;
    if (isEmpty) word.pop_back();
    words.push_back(std::move(word));
    if (isEmpty) words.emplace_back();
  }
  std::reverse(words.begin(), words.end());
  return words;
}

int runCommand(int argc, char** argv) {
  CLI::App app{"Dyes the interface of hosted processes, and shows what changed.", "varnix"};
  app.set_version_flag("--version", "varnix " VARNIX_VERSION);
  app.require_subcommand(0, 1);
  varnix::cli::Action chosen;
  varnix::cli::addSettings(app, chosen);
  varnix::cli::addRun(app, chosen);
  varnix::cli::addInspect(app, chosen);
  varnix::cli::addPick(app, chosen);
  varnix::cli::addPane(app, chosen);
  varnix::cli::addPreview(app, chosen);
  // Last: a subcommand takes over the footer that its parent has.
  app.footer(
      "Settings lie under a container root, the folder that stands for the device's \"/\": "
      "--root,\nelse $VARNIX_ROOT, else a folder under your data directory.\n\n"
      "  varnix settings set global_color '#1e88e5'\n"
      "  varnix inspect --bundle com.example.notes");
  try {
    app.parse(wordsReversed(argc, argv));
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
  openStandardStreams();
  try {
    return runCommand(argc, argv);
  } catch (const varnix::cli::UsageError& error) {
    return complain(error.what(), 2);
  } catch (const std::exception& error) {
    return complain(error.what(), 1);
  }
}
