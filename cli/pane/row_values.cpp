#include "pane/row_values.h"

#include <sstream>

#include "ColorPicker/picker.h"
#include "common/errors.h"
#include "common/joined.h"
#include "common/nearest.h"
#include "prefs/parsed_color.h"
#include "settings/file.h"
#include "settings/known_key.h"

namespace varnix::cli {

namespace {

namespace pages = host::settings;

/// The text between quotes at the beginning, and what follows; nothing without them.
std::optional<RowAndValue> quoted(const std::string& words) {
  if (words.size() < 2 || (words[0] != '"' && words[0] != '\'')) return {};
  const std::size_t end = words.find(words[0], 1);
  if (end == std::string::npos) return {};
  const std::size_t value = words.find_first_not_of(' ', end + 1);
  return RowAndValue{words.substr(1, end - 1),
                     value == std::string::npos ? "" : words.substr(value)};
}

std::string unquoted(const std::string& text) {
  const auto parts = quoted(text);
  return parts && parts->value.empty() ? parts->row : text;
}

[[noreturn]] void refuse(const std::string& wanted, const std::string& value) {
  throw UsageError("wrong value (wanted: " + wanted + ")", value);
}

struct Choice {
  std::string value, title;
};

std::vector<Choice> choicesOf(const ShownRow& row) {
  if (row.row.type() != PSLinkListCell) return {};
  std::vector<Choice> choices;
  NSArray* values = send(row.row.specifier, PSSpecifier::values);
  NSDictionary* titles = send(row.row.specifier, PSSpecifier::titleDictionary);
  for (NSUInteger i = 0; i < send(values, NSArray::count); ++i) {
    NSObject* value = send(values, NSArray::objectAtIndex, i);
    choices.push_back({pages::Row::words(value),
                       pages::Row::words(send(titles, NSDictionary::objectForKey, value))});
  }
  return choices;
}

bool isColorRow(const ShownRow& row) {
  return send(row.row.specifier, PSSpecifier::propertyForKey, "libcolorpicker"_ns) != nullptr;
}

void flip(const ShownRow& row, const std::string& value) {
  bool isWanted = false;
  if (isSameText(value, "on") || value == "true" || value == "1") isWanted = true;
  else if (!isSameText(value, "off") && value != "false" && value != "0")
    refuse("on or off", value);
  if (row.isOn != isWanted) pages::flip(row.row);
}

void choose(const ShownRow& row, const std::vector<Choice>& choices, const std::string& value) {
  const Choice* chosen = nullptr;
  std::vector<std::string> titles;
  for (const Choice& choice : choices) {
    if (isSameText(choice.title, value) || choice.value == value) chosen = &choice;
    titles.push_back(choice.title);
  }
  if (chosen == nullptr) refuse(joined(titles, " or "), value + didYouMean(value, titles));
  pages::press(row.row);
  const ShownPage list = shownPage();
  for (const ShownRow* item : list.rows()) {
    if (item->title == chosen->title) pages::press(item->row);
  }
  pages::back();
}

/// In the picker that the row opens.
void pickColor(const ShownRow& row, const std::string& value) {
  Rgba color{};
  if (!readColor(value.c_str(), color)) refuse(std::string(describe(settings::Kind::color)), value);
  pages::press(row.row);
  NSObject* picker = host::shownPicker();
  if (picker == nullptr) throw Failure("the row opened no picker", row.title);
  if (color.alpha < 1 && !host::pickerHasAlpha(picker)) {
    host::cancelPicker(picker);
    refuse("#RRGGBB, the picker has no slider for the alpha", value);
  }
  auto part = [](double component) { return static_cast<CGFloat>(component); };
  host::choosePickerColor(picker, UIColor::colorWithRed(part(color.red), part(color.green),
                                                        part(color.blue), part(color.alpha)));
  host::closePicker(picker);
}

}  // namespace

RowAndValue splitRowAndValue(const ShownPage& page, const std::string& words) {
  if (auto parts = quoted(words); parts && !parts->value.empty())
    return {parts->row, unquoted(parts->value)};
  for (std::size_t end = words.rfind(' '); end != std::string::npos && end > 0;
       end = words.rfind(' ', end - 1)) {
    const std::string row = words.substr(0, words.find_last_not_of(' ', end) + 1);
    if (findRow(page, row) != nullptr) return {row, unquoted(words.substr(end + 1))};
  }
  const std::size_t first = words.find(' ');
  return {words.substr(0, first), unquoted(words.substr(first + 1))};
}

std::vector<std::string> valuesOf(const ShownRow& row) {
  if (row.isOn) return {"on", "off"};
  if (isColorRow(row)) return {"#"};
  std::vector<std::string> titles;
  for (const Choice& choice : choicesOf(row)) titles.push_back(choice.title);
  return titles;
}

void setRow(const ShownRow& row, const std::string& value) {
  if (!row.isEnabled) throw Failure("the row is disabled", row.title);
  if (row.isOn) return flip(row, value);
  if (const auto choices = choicesOf(row); !choices.empty()) return choose(row, choices, value);
  if (!isColorRow(row)) throw Failure("the row has no value", row.title);
  pickColor(row, value);
}

void requireReadableFile() { storedSettings(); }

}  // namespace varnix::cli
