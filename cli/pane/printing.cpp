#include "pane/printing.h"

#include <sstream>

#include "common/escaped.h"
#include "common/joined.h"
#include "common/swatches.h"

namespace varnix::cli {

namespace {

constexpr std::size_t kWidth = 78;
constexpr std::size_t kTitleWidth = 26;
constexpr char kIndent[] = "      ";

/// How many columns a text takes: a Chinese or Japanese letter takes two.
std::size_t columnsOf(const std::string& text) {
  std::size_t columns = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xc0) == 0x80) continue;
    // Three bytes from U+2E80 on.
    const bool isWide = byte >= 0xe3 || (byte == 0xe2 && i + 1 < text.size() &&
                                         static_cast<unsigned char>(text[i + 1]) >= 0xba);
    columns += isWide ? 2 : 1;
  }
  return columns;
}

std::string filled(std::string text, std::size_t width) {
  const std::size_t columns = columnsOf(text);
  return columns < width ? text.append(width - columns, ' ') : text;
}

/// With its own line ends, and others between words.
std::string wrapped(const std::string& text) {
  std::istringstream lines(text);
  std::string result;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string current = kIndent;
    for (std::string word; words >> word;) {
      if (columnsOf(current) + 1 + columnsOf(word) > kWidth && current != kIndent) {
        result.append(current).append("\n");
        current = kIndent;
      }
      current.append(current == kIndent ? "" : " ").append(escaped(word));
    }
    if (current != kIndent) result.append(current).append("\n");
  }
  return result;
}

std::string swatches(const ShownRow& row) {
  std::string text;
  for (const std::string& color : row.colors) text += swatch(color);
  return text;
}

std::string valueOf(const ShownRow& row, bool withSwatches) {
  std::vector<std::string> parts;
  if (row.isOn) parts.emplace_back(*row.isOn ? "on" : "off");
  if (!row.value.empty()) parts.push_back(escaped(row.value));
  if (row.isTicked) parts.emplace_back("\u2713");
  if (row.isButton) parts.emplace_back("(button)");
  if (!row.isEnabled) parts.emplace_back("(disabled)");
  if (row.isLink) parts.emplace_back(">");
  return (withSwatches ? swatches(row) : "") + joined(parts);
}

std::string lineOf(const ShownRow& row, bool withSwatches) {
  std::string number = std::to_string(row.number);
  number.insert(0, number.size() < 3 ? 3 - number.size() : 0, ' ');
  const std::string value = valueOf(row, withSwatches);
  const std::string title = escaped(row.title);
  return number + "  " + (value.empty() ? title : filled(title, kTitleWidth) + " " + value);
}

/// What the bars show.
std::vector<std::string> barLines(const ShownPage& page, bool withSwatches) {
  std::vector<std::string> lines;
  if (!page.barColor.empty())
    lines.push_back("bar   " + (withSwatches ? swatch(page.barColor) : "") + page.barColor);
  if (page.searched) lines.push_back("find  " + escaped(*page.searched));
  return lines;
}

}  // namespace

PrintedPage printed(const ShownPage& page, bool withSwatches) {
  PrintedPage made{escaped(joined(page.path, " > ")) + "\n", barLines(page, withSwatches)};
  for (const std::string& line : made.lines) made.all += line + "\n";
  bool isFirst = true;
  for (const ShownSection& section : page.sections) {
    if (!isFirst) made.all += "\n";
    isFirst = false;
    if (!section.header.empty()) made.all += "  " + escaped(section.header) + "\n";
    for (const ShownRow& row : section.rows) {
      made.lines.push_back(lineOf(row, withSwatches));
      made.all += made.lines.back() + "\n";
    }
    made.all += wrapped(section.footer);
  }
  return made;
}

std::string rowsWith(const ShownPage& page, const std::string& text, bool withSwatches) {
  std::string found;
  for (const ShownSection& section : page.sections) {
    const bool isAll = containsText(section.header, text) || containsText(section.footer, text);
    for (const ShownRow& row : section.rows) {
      if (isAll || containsText(row.title, text) || containsText(row.value, text) ||
          containsText(row.key, text))
        found += lineOf(row, withSwatches) + "\n";
    }
  }
  return found;
}

std::string changes(const PrintedPage& before, const PrintedPage& after, const std::string& mark) {
  auto marked = [&](const std::string& text) {
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);)
      result +=
          mark.empty() || line.starts_with(' ') ? mark + line + "\n" : mark + " " + line + "\n";
    return result;
  };
  if (before.all == after.all) return "";
  if (before.lines.size() != after.lines.size()) return marked(after.all);
  std::string text;
  for (std::size_t i = 0; i < after.lines.size(); ++i) {
    if (before.lines[i] != after.lines[i]) text += after.lines[i] + "\n";
  }
  // Only headers and footers differ.
  return marked(text.empty() ? after.all : text);
}

}  // namespace varnix::cli
