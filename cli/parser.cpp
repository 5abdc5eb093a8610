#include "parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <sstream>
#include <string_view>
#include <type_traits>

#include "common/errors.h"
#include "common/nearest.h"

namespace varnix::cli {

namespace {

/// Words that may have been meant instead of one that a command did not understand.
std::vector<std::string> wordsOf(const CLI::App& command) {
  std::vector<std::string> words;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) words.push_back("--" + name);
  }
  for (const CLI::App* sub : command.get_subcommands({})) words.push_back(sub->get_name());
  return words;
}

/// Names the first word that was not understood; those after it may have belonged to it.
std::string messageForExtras(const CLI::App& command) {
  const auto extras = command.remaining();
  if (extras.empty() && !command.get_subcommands().empty())
    return messageForExtras(*command.get_subcommands().back());
  const std::string word = extras.empty() ? "" : extras.front();
  return "unexpected argument: " + word +
         didYouMean(word.substr(0, word.find('=')), wordsOf(command));
}

/// The parser's complaints in our own words.
std::string messageFor(const CLI::ParseError& error, const CLI::App& app) {
  const std::string text = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) return messageForExtras(app);
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    constexpr std::string_view kEnd = " is required";
    if (text.ends_with(kEnd)) {
      return "missing argument: " + text.substr(0, text.size() - kEnd.size());
    }
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return "wrong number of values: " + text;
  }
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
    return "unusable value: " + text.substr(text.find(": ") + 2);
  }
  return "wrong usage: " + text;
}

/// If the command has no arguments of its own, the words after a list's first value belong to the
/// list.
void addOption(CLI::App& app, const Option& option, bool hasArguments) {
  if (bool* const* flag = std::get_if<bool*>(&option.target)) {
    app.add_flag(option.name, **flag, option.meaning);
    return;
  }
  CLI::Option* added = std::visit(
      [&](auto target) -> CLI::Option* {
        if constexpr (std::is_pointer_v<decltype(target)>) {
          return app.add_option(option.name, *target, option.meaning);
        } else {
          return app.add_option(option.name, option.meaning);
        }
      },
      option.target);
  added->type_name(option.value);
  if (option.isArgument()) added->required(!option.isOptional);
  else
    added->allow_extra_args(!hasArguments &&
                            std::holds_alternative<std::vector<std::string>*>(option.target));
}

void declare(CLI::App& app, const Command& command, const Command*& chosen) {
  const bool hasArguments = std::any_of(command.options.begin(), command.options.end(),
                                        [](const Option& option) { return option.isArgument(); });
  for (const Option& option : command.options) addOption(app, option, hasArguments);
  for (const Command& sub : command.commands) {
    declare(*app.add_subcommand(sub.name, sub.summary), sub, chosen);
  }
  if (!command.commands.empty()) app.require_subcommand(0, 1);
  // After the subcommands: otherwise they would inherit it.
  app.footer(command.notes);
  app.callback([&app, &command, &chosen] {
    if (app.get_subcommands().empty()) chosen = &command;
  });
}

/// An empty value for "--option=", for which the parser would take the next word.
std::vector<std::string> withEmptyValues(const std::vector<std::string>& given) {
  std::vector<std::string> words;
  bool areOptions = true;
  for (const std::string& word : given) {
    if (word == "--") areOptions = false;
    if (areOptions && word.starts_with("--") && word.find('=') == word.size() - 1) {
      words.push_back(word.substr(0, word.size() - 1));
      words.emplace_back();
    } else {
      words.push_back(word);
    }
  }
  return words;
}

/// Repeats the option before "-[Class method]", which the parser would take for an option after a
/// list's first value.
std::vector<std::string> withMethodNames(const std::vector<std::string>& given) {
  std::vector<std::string> words;
  std::string option;
  for (const std::string& word : given) {
    if (word.starts_with("-[") && !option.empty() && words.back() != option)
      words.push_back(option);
    if (word.starts_with("--")) option = word.substr(0, word.find('='));
    words.push_back(word);
  }
  return words;
}

/// "help COMMAND" is "COMMAND --help".
void replaceHelp(const Command& program, std::vector<std::string>& words) {
  if (words.empty() || words.front() != "help") return;
  words.erase(words.begin());
  const Command* at = &program;
  for (const std::string& word : words) {
    if (word.starts_with("-")) break;
    const auto found = std::find_if(at->commands.begin(), at->commands.end(),
                                    [&](const Command& sub) { return sub.name == word; });
    if (found == at->commands.end()) {
      std::vector<std::string> names;
      for (const Command& sub : at->commands) names.push_back(sub.name);
      throw UsageError("no such command", word + didYouMean(word, names));
    }
    at = &*found;
  }
  words.emplace_back("--help");
}

}  // namespace

std::function<int()> parse(const Command& program, std::vector<std::string> words) {
  replaceHelp(program, words);
  words = withEmptyValues(withMethodNames(words));
  // The parser takes the words in reverse order.
  std::reverse(words.begin(), words.end());
  CLI::App app{program.summary, program.name};
  app.set_version_flag("-V,--version", program.name + " " VARNIX_VERSION);
  const Command* chosen = nullptr;
  declare(app, program, chosen);
  try {
    app.parse(words);
  } catch (const CLI::Success& answer) {
    std::ostringstream text;
    app.exit(answer, text, text);
    return [text = text.str()] {
      std::cout << text;
      return 0;
    };
  } catch (const CLI::ParseError& error) {
    throw UsageError(messageFor(error, app));
  }
  if (chosen == nullptr || !chosen->run) throw UsageError("missing command", "see varnix --help");
  return chosen->run;
}

}  // namespace varnix::cli
