#include "inspect/table.h"

#include <algorithm>

#include "common/escaped.h"
#include "common/json.h"
#include "common/swatches.h"

namespace varnix::cli {

namespace {

constexpr std::size_t kCellWidth = 14;

class Table {
 public:
  explicit Table(bool withSwatches) : withSwatches_(withSwatches) {}

  /// A colour with its swatch, a boolean, or a dash.
  std::string cell(const Json& answer) const {
    if (answer.is_boolean()) return padded(answer.get<bool>() ? "yes" : "no", width());
    if (!answer.is_string()) return padded("-", width());
    const auto color = answer.get<std::string>();
    return (withSwatches_ ? swatch(color) : "") + padded(color, kCellWidth);
  }
  std::string heading(const char* text) const { return padded(text, width()); }

 private:
  std::size_t width() const { return kCellWidth + (withSwatches_ ? 3 : 0); }

  bool withSwatches_;
};

std::string identity(const Json& report) {
  const Json& bundle = report["bundle"];
  return (bundle.is_string() ? escaped(bundle.get<std::string>()) : "no bundle") + " (" +
         report["kind"].get<std::string>() + ")\n";
}

std::string dyes(const Json& report, const Table& table) {
  std::string text = "dye " + table.cell(report["dye"]) + '\n';
  const Json& icon = report["iconColor"];
  if (icon.is_string()) text += "icon colour " + table.cell(icon) + '\n';
  return text;
}

std::string installation(const Json& report) {
  const Json& installed = report["installed"];
  const auto hooks = std::count_if(installed.begin(), installed.end(),
                                   [](const Json& change) { return change["op"] == "hook"; });
  const auto all = static_cast<std::ptrdiff_t>(installed.size());
  return std::to_string(hooks) + " methods replaced, " + std::to_string(all - hooks) + " added\n";
}

std::string skipped(const Json& report) {
  std::string text;
  for (const Json& method : report["skipped"]) {
    text += "passed over: " + method["method"].get<std::string>() + ": " +
            method["reason"].get<std::string>() + '\n';
  }
  return text;
}

std::string logLines(const Json& report) {
  std::string text;
  for (const Json& line : report["log"]) text += escaped(line["line"].get<std::string>()) + '\n';
  return text;
}

const char* describeType(const Json& type) {
  if (!type.is_number()) return "-";
  if (type == 1) return "not dyed";
  return type == 2 ? "own colour" : "follows the dye";
}

std::string elements(const Json& report, const Table& table) {
  std::string text = padded("element", 12) + padded("type", 19) + "colour\n";
  for (const auto& [name, element] : report["elements"].items()) {
    const Json& type = element["type"];
    const std::string number = type.is_number() ? type.dump() + " " : "";
    text += padded(name, 12) + padded(number + describeType(type), 19) +
            table.cell(element["color"]) + '\n';
  }
  return text;
}

std::string questionOf(const Json& surface) {
  return surface["class"].get<std::string>() + ' ' + surface["property"].get<std::string>();
}

std::string surfaces(const Json& report, const Table& table) {
  std::size_t question = 8;
  std::size_t situation = 5;
  for (const Json& surface : report["surfaces"]) {
    question = std::max(question, questionOf(surface).size());
    situation = std::max(situation, surface["case"].get<std::string>().size());
  }
  const bool hasBefore = report["surfaces"][0].contains("before");
  std::string text = padded("surface", question + 2) + padded("case", situation + 2) +
                     (hasBefore ? table.heading("before") : "") + "after\n";
  for (const Json& surface : report["surfaces"]) {
    text += padded(questionOf(surface), question + 2) +
            padded(surface["case"].get<std::string>(), situation + 2) +
            (hasBefore ? table.cell(surface["before"]) : "") + table.cell(surface["after"]) + '\n';
  }
  return text;
}

std::string withoutTrailingSpace(const std::string& text) {
  std::string result;
  for (char c : text) {
    if (c == '\n') result.erase(result.find_last_not_of(' ') + 1);
    result += c;
  }
  return result;
}

}  // namespace

std::string table(const Json& report, bool withSwatches) {
  const Table table(withSwatches);
  std::string text = identity(report) + dyes(report, table) + installation(report) +
                     skipped(report) + logLines(report) + '\n' + elements(report, table);
  if (!report["surfaces"].empty()) text += '\n' + surfaces(report, table);
  return withoutTrailingSpace(text);
}

}  // namespace varnix::cli
