#include "completion/completion.h"

#include <iostream>
#include <memory>
#include <string_view>
#include <utility>

#include "commands.h"
#include "common/errors.h"
#include "common/joined.h"
#include "common/nearest.h"

namespace varnix::cli {

namespace {

/// Every command with its path; the program itself comes first.
std::vector<std::pair<Path, const Command*>> allCommands(const Command& program) {
  std::vector<std::pair<Path, const Command*>> all{{{}, &program}};
  forEachCommand(
      program, [&](const Path& path, const Command& command) { all.emplace_back(path, &command); });
  return all;
}

std::vector<Option> optionsOf(const Path& path, const Command& command) {
  std::vector<Option> options = command.options;
  options.push_back(helpOption());
  if (path.empty()) options.push_back(versionOption());
  return options;
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != text.npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

/// In single quotes.
std::string quoted(const std::string& text) { return "'" + replaced(text, "'", "'\\''") + "'"; }

// --- bash ---

std::string bashAnswer(const Option& option) {
  if (!option.choices.empty()) return "words=" + quoted(joined(option.choices));
  if (option.completes == Completes::files) return "action=file";
  if (option.completes == Completes::folders) return "action=directory";
  return "return";
}

/// What completes an option's value: one line for each of its names.
std::string bashValues(const Path& path, const Option& option) {
  std::string text;
  for (const std::string& name : namesOf(option)) {
    text += "    " + quoted(joined(path) + " " + name) + ") " + bashAnswer(option) + " ;;\n";
  }
  return text;
}

/// What else may follow a command.
std::string bashWords(const Path& path, const Command& command) {
  std::vector<std::string> words;
  std::string files;
  for (const Command& sub : command.commands) words.push_back(sub.name);
  for (const Option& option : optionsOf(path, command)) {
    if (option.isArgument()) {
      words.insert(words.end(), option.choices.begin(), option.choices.end());
      if (option.completes != Completes::nothing) files = " " + bashAnswer(option);
    } else {
      for (const std::string& name : namesOf(option)) words.push_back(name);
    }
  }
  return "    " + quoted(joined(path)) + ") words=" + quoted(joined(words)) + files + " ;;\n";
}

constexpr const char* kBashEnd = R"(  esac
  COMPREPLY=()
  [ -z "$words" ] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
  if [ -n "$action" ]; then
    local -a names
    mapfile -t names < <(compgen -A "$action" -- "$current")
    COMPREPLY+=("${names[@]}")
    compopt -o filenames 2>/dev/null || true
  fi
}

complete -F _varnix varnix
)";

// --- zsh ---

/// A text inside the description of an argument.
std::string zshText(const std::string& text) {
  return replaced(replaced(replaced(onOneLine(text), "[", "\\["), "]", "\\]"), ":", "\\:");
}

std::string zshAction(const Option& option) {
  if (!option.choices.empty()) return "(" + joined(option.choices) + ")";
  if (option.completes == Completes::files) return "_files";
  if (option.completes == Completes::folders) return "_files -/";
  return " ";
}

std::string zshArgument(const Option& option, std::size_t place) {
  const bool repeats = std::holds_alternative<std::vector<std::string>*>(option.target);
  return (repeats ? "*" : std::to_string(place)) + ":" + option.name + ":" + zshAction(option);
}

std::string zshOption(const Option& option, const std::string& name) {
  const bool repeats = std::holds_alternative<std::vector<std::string>*>(option.target);
  std::string text = (repeats ? "*" : "") + name + "[" + zshText(option.meaning) + "]";
  if (!option.value.empty()) text += ":" + zshText(option.value) + ":" + zshAction(option);
  return text;
}

std::string zshFunction(const Path& path) { return replaced("_varnix " + joined(path), " ", "_"); }

void appendZsh(std::string& text, const Path& path, const Command& command) {
  text += (path.empty() ? "_varnix" : zshFunction(path)) + "() {\n";
  text += "  local context state state_descr line curcontext=$curcontext\n  typeset -A opt_args\n";
  text += "  _arguments -C";
  std::size_t place = 0;
  for (const Option& option : optionsOf(path, command)) {
    if (option.isArgument()) {
      text += " \\\n    " + quoted(zshArgument(option, ++place));
      continue;
    }
    for (const std::string& name : namesOf(option)) {
      text += " \\\n    " + quoted(zshOption(option, name));
    }
  }
  if (command.commands.empty()) {
    text += "\n}\n\n";
    return;
  }
  text += " \\\n    '1:command:->command' '*::argument:->argument'\n  case $state in\n";
  text += "    command)\n      local -a commands=(";
  for (const Command& sub : command.commands) {
    text += "\n        " + quoted(sub.name + ":" + zshText(sub.summary));
  }
  text += ")\n      _describe command commands ;;\n    argument)\n      case $words[1] in\n";
  for (const Command& sub : command.commands) {
    Path below = path;
    below.push_back(sub.name);
    text += "        " + sub.name + ") " + zshFunction(below) + " ;;\n";
  }
  text += "      esac ;;\n  esac\n}\n\n";
}

// --- fish ---

/// True if the words so far lead to that command and no further.
std::string fishCondition(const Path& path, const Command& command) {
  std::string text;
  for (const std::string& word : path) {
    text += (text.empty() ? "" : "; and ") + ("__fish_seen_subcommand_from " + word);
  }
  if (command.commands.empty()) return text;
  text += text.empty() ? "not" : "; and not";
  text += " __fish_seen_subcommand_from";
  for (const Command& sub : command.commands) text += " " + sub.name;
  return text;
}

std::string fishValue(const Option& option) {
  if (!option.choices.empty()) return " -x -a " + quoted(joined(option.choices));
  if (option.completes == Completes::files) return " -r -F";
  if (option.completes == Completes::folders) return " -x -a '(__fish_complete_directories)'";
  return option.value.empty() ? "" : " -x";
}

std::string fishLine(const std::string& condition, const Option& option) {
  std::string text = "complete -c varnix -n " + quoted(condition);
  if (option.isArgument()) {
    if (!option.choices.empty()) return text + " -a " + quoted(joined(option.choices)) + "\n";
    return option.completes == Completes::files ? text + " -F\n" : "";
  }
  for (const std::string& name : namesOf(option)) {
    text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  return text + fishValue(option) + " -d " + quoted(onOneLine(option.meaning)) + "\n";
}

using Print = std::string (*)(const Command&);
constexpr std::pair<const char*, Print> kShells[] = {
    {"bash", bashCompletion}, {"zsh", zshCompletion}, {"fish", fishCompletion}};

}  // namespace

std::string bashCompletion(const Command& program) {
  std::string text =
      "# Completion of varnix for bash.\n"
      "_varnix() {\n"
      "  local command= words= action= i\n"
      "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
      "  # bash takes --option=value for three words.\n"
      "  [ \"$current\" != = ] || current=\n"
      "  [ \"$previous\" != = ] || previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
      "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
      "    case \"$command ${COMP_WORDS[i]}\" in\n";
  forEachCommand(program, [&](const Path& path, const Command& command) {
    const Path above(path.begin(), path.end() - 1);
    text += "      " + quoted(joined(above) + " " + command.name) +
            ") command=" + quoted(joined(path)) + " ;;\n";
  });
  text += "    esac\n  done\n  case \"$command $previous\" in\n";
  for (const auto& [path, command] : allCommands(program)) {
    for (const Option& option : command->options) {
      if (!option.value.empty()) text += bashValues(path, option);
    }
  }
  text += "    *) case \"$command\" in\n";
  for (const auto& [path, command] : allCommands(program)) text += bashWords(path, *command);
  return text + "    esac ;;\n" + kBashEnd;
}

std::string zshCompletion(const Command& program) {
  std::string text = "#compdef varnix\n# Completion of varnix for zsh.\n\n";
  for (const auto& [path, command] : allCommands(program)) appendZsh(text, path, *command);
  return text + "_varnix \"$@\"\n";
}

std::string fishCompletion(const Command& program) {
  std::string text = "# Completion of varnix for fish.\ncomplete -c varnix -f\n";
  for (const auto& [path, command] : allCommands(program)) {
    const std::string condition = fishCondition(path, *command);
    for (const Command& sub : command->commands) {
      text += "complete -c varnix -n " + quoted(condition) + " -a " + sub.name + " -d " +
              quoted(onOneLine(sub.summary)) + "\n";
    }
    for (const Option& option : optionsOf(path, *command)) text += fishLine(condition, option);
  }
  return text;
}

Command completionCommand(Command (*program)()) {
  auto shell = std::make_shared<std::string>();
  std::vector<std::string> names;
  for (const auto& [name, print] : kShells) names.emplace_back(name);
  return {.name = "completion",
          .summary = "Print what a shell reads to complete this command: bash, zsh or fish",
          .options = {{.name = "SHELL",
                       .target = shell.get(),
                       .meaning = "bash, zsh or fish",
                       .choices = names}},
          .run = [shell, program, names] {
            for (const auto& [name, print] : kShells) {
              if (*shell != name) continue;
              std::cout << print(program());
              return 0;
            }
            throw UsageError("no completion for this shell", *shell + didYouMean(*shell, names));
          }};
}

}  // namespace varnix::cli
