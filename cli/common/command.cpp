#include "common/command.h"

#include <algorithm>
#include <sstream>

namespace varnix::cli {

namespace {

void visit(const Path& path, const Command& command,
           const std::function<void(const Path&, const Command&)>& call) {
  for (const Command& sub : command.commands) {
    Path below = path;
    below.push_back(sub.name);
    call(below, sub);
    visit(below, sub, call);
  }
}

}  // namespace

Option helpOption() { return {.name = "-h,--help", .meaning = "Print this help message and exit"}; }

Option versionOption() {
  return {.name = "-V,--version", .meaning = "Display program version information and exit"};
}

Option colorOption(std::string& choice) {
  return {.name = "--color",
          .value = "WHEN",
          .target = &choice,
          .meaning = "Colour swatches: auto (in a terminal), always or never",
          .choices = {"auto", "always", "never"}};
}

Option rootOption(std::optional<std::string>& root) {
  return {.name = "--root",
          .value = "DIR",
          .target = &root,
          .meaning = "Container root",
          .completes = Completes::folders};
}

Option jsonOption(bool& json) {
  return {.name = "--json", .target = &json, .meaning = "Print JSON"};
}

Option iconOption(std::vector<std::string>& icons) {
  return {.name = "--icon",
          .value = "ID=FILE",
          .target = &icons,
          .meaning = "An application's icon, PNG or JPEG; repeatable",
          .completes = Completes::files};
}

Command helpCommand(const Command& program) {
  Command help{
      .name = "help",
      .summary = "Print the help of a command",
      .options = {{.name = "COMMAND", .meaning = "The words that lead to it", .isOptional = true}}};
  for (const Command& command : program.commands) help.options[0].choices.push_back(command.name);
  return help;
}

void forEachCommand(const Command& program,
                    const std::function<void(const Path&, const Command&)>& call) {
  visit({}, program, call);
}

std::vector<std::string> namesOf(const Option& option) {
  std::vector<std::string> names;
  std::istringstream text(option.name);
  for (std::string name; std::getline(text, name, ',');) names.push_back(name);
  return names;
}

std::string onOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace varnix::cli
