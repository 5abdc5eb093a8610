#include "man/manual.h"

#include <iostream>

#include "commands.h"
#include "common/joined.h"

namespace varnix::cli {

namespace {

/// Text that the formatter prints letter by letter.
std::string plain(const std::string& text) {
  std::string escaped;
  bool atStart = true;
  for (const char c : text) {
    if (atStart && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '\\') escaped += "\\e";
    else if (c == '-') escaped += "\\-";
    else escaped += c;
    atStart = c == '\n';
  }
  return escaped;
}

std::string bold(const std::string& text) { return "\\fB" + plain(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + plain(text) + "\\fR"; }

std::string entry(const std::string& tag, const std::string& text) {
  return ".TP\n" + tag + "\n" + plain(onOneLine(text)) + ".\n";
}

std::string optionEntry(const Option& option) {
  std::string tag;
  for (const std::string& name : namesOf(option)) tag += (tag.empty() ? "" : ", ") + bold(name);
  if (!option.value.empty()) tag += " " + italic(option.value);
  return entry(option.isArgument() ? italic(option.name) : tag, option.meaning);
}

/// "varnix inspect [OPTION]...".
std::string synopsis(const std::string& program, const Path& path, const Command& command) {
  std::string text = bold(program + (path.empty() ? "" : " ") + joined(path));
  bool hasOptions = false;
  std::string arguments;
  for (const Option& option : command.options) {
    hasOptions = hasOptions || !option.isArgument();
    if (!option.isArgument()) continue;
    const bool repeats = std::holds_alternative<std::vector<std::string>*>(option.target);
    const std::string name = italic(option.name) + (repeats ? "..." : "");
    arguments += option.isOptional ? " [" + name + "]" : " " + name;
  }
  return text + (hasOptions ? " [" + italic("OPTION") + "]..." : "") + arguments;
}

std::string notes(const Command& command) {
  return command.notes.empty() ? "" : ".PP\n.nf\n" + plain(command.notes) + "\n.fi\n";
}

}  // namespace

std::string manualPage(const Command& program) {
  std::string text = ".TH VARNIX 1 \"\" \"" + plain(program.name) +
                     " " VARNIX_VERSION
                     "\" \"User Commands\"\n.SH NAME\nvarnix \\- hosts processes and dyes their "
                     "interface\n.SH SYNOPSIS\n" +
                     bold(program.name) + " " + italic("COMMAND") + " [" + italic("OPTION") +
                     "]...\n.SH DESCRIPTION\n" + plain(program.summary) + "\n" + notes(program) +
                     ".SH OPTIONS\n" + optionEntry(helpOption()) + optionEntry(versionOption()) +
                     ".SH COMMANDS\n";
  forEachCommand(program, [&](const Path& path, const Command& command) {
    if (!command.commands.empty()) return;
    text += ".SS " + synopsis(program.name, path, command) + "\n" +
            plain(onOneLine(command.summary)) + ".\n";
    for (const Option& option : command.options) text += optionEntry(option);
    text += notes(command);
  });
  text += ".SH ENVIRONMENT\n";
  text += entry(bold("VARNIX_ROOT"), "The container root where there is no --root");
  text +=
      entry(bold("VARNIX_GL"), "gpu: analyse pictures on a graphics processor, not in software");
  text += entry(bold("NO_COLOR"), "Where it is not empty, no swatches unless --color says so");
  text += ".SH EXIT STATUS\n";
  text += entry("0", "It worked");
  text += entry("1", "Something that was asked for did not work; standard error says what");
  text += entry("2", "The command line was not understood");
  text += entry("128 + N", "Signal N ended it, or a process that it hosts");
  return text;
}

Command manCommand(Command (*program)()) {
  return {
      .name = "man", .summary = "Print the manual page, in the format of man(7)", .run = [program] {
        std::cout << manualPage(program());
        return 0;
      }};
}

}  // namespace varnix::cli
