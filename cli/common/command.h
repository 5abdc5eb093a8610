// A command's name, options and action, as data. Parsing, the help, the manual page and the shells'
// completions are all made from it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace varnix::cli {

/// What a shell offers as a value.
enum class Completes { nothing, files, folders };

/// An option, or a positional argument.
struct Option {
  using Target =
      std::variant<std::monostate, bool*, int*, double*, std::string*, std::optional<double>*,
                   std::optional<std::string>*, std::vector<std::string>*>;

  std::string name = {};   ///< "--json" or "-V,--version"; for an argument, a word in capitals
  std::string value = {};  ///< the placeholder for its value; empty for a switch or an argument
  Target target = {};      ///< unchanged if the option is not given; a list may be given repeatedly
  std::string meaning = {};  ///< what it does, without a full stop
  Completes completes = Completes::nothing;
  std::vector<std::string> choices = {};  ///< the values, if there are only a few
  bool isOptional = false;                ///< for an argument

  bool isArgument() const { return !name.starts_with('-'); }
};

struct Command {
  std::string name = {};
  std::string summary = {};
  std::vector<Option> options = {};
  std::vector<Command> commands = {};
  std::string notes = {};         ///< below the help
  std::function<int()> run = {};  ///< returns the exit status; empty if a subcommand must follow
};

// Options that several commands share. The parser itself handles help and version.
Option helpOption();
Option versionOption();
Option colorOption(std::string& choice);
Option rootOption(std::optional<std::string>& root);
Option jsonOption(bool& json);
Option iconOption(std::vector<std::string>& icons);

/// "help COMMAND", which the parser takes as "COMMAND --help".
Command helpCommand(const Command& program);

/// Calls the function for each command below the program, a parent before its children, with the
/// words that lead to the command; the last word is its own.
using Path = std::vector<std::string>;
void forEachCommand(const Command& program,
                    const std::function<void(const Path& path, const Command& command)>& call);

/// The names of an option: "-V,--version" has two.
std::vector<std::string> namesOf(const Option& option);

/// The text without the line ends that a terminal's width requires.
std::string onOneLine(std::string text);

}  // namespace varnix::cli
