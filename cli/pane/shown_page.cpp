#include "pane/shown_page.h"

#include <algorithm>
#include <charconv>

#include "common/errors.h"
#include "common/nearest.h"
#include "probe/surfaces.h"

namespace varnix::cli {

namespace {

using host::settings::Row;

std::string lowered(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
  return text;
}

/// Empty for what is no colour.
std::string colorText(NSObject* color) {
  const auto answer = probe::colorAnswer(color);
  const auto* text = std::get_if<std::string>(&answer);
  return text == nullptr ? "" : *text;
}

/// The disc at the right of the colour library's cell is a view of that colour. The pane's own
/// discs at the left are pictures; their rows name the colour.
std::vector<std::string> colorsOf(const Row& row) {
  std::vector<std::string> colors;
  auto add = [&](NSObject* color) {
    if (std::string text = colorText(color); !text.empty()) colors.push_back(std::move(text));
  };
  if (!row.hasSwitch() && !row.hasField())
    add(send<NSObject*>(row.control(), "backgroundColor"_sel));
  add(send(row.specifier, PSSpecifier::propertyForKey, "VNXColor"_ns));
  return colors;
}

/// A view at the right edge takes the arrow's place. The subtitle of a cell whose title is missing
/// is its value.
ShownRow shown(const Row& row, std::size_t number) {
  ShownRow made{number,
                row,
                row.identifier(),
                row.title(),
                row.detail(),
                colorsOf(row),
                {},
                row.isTicked(),
                row.isLink() && row.control() == nullptr,
                row.type() == PSButtonCell,
                row.isEnabled()};
  if (row.hasSwitch()) made.isOn = row.isOn();
  if (made.title.empty()) {
    made.title = row.spokenLabel();
    made.value = row.spokenValue();
  }
  return made;
}

std::vector<std::string> titles() {
  auto* stack = send<NSArray*>(host::settings::navigation(), "viewControllers"_sel);
  std::vector<std::string> list;
  for (NSUInteger i = 0; i < send(stack, NSArray::count); ++i) {
    list.push_back(host::settings::titleOf(
        static_cast<UIViewController*>(send(stack, NSArray::objectAtIndex, i))));
  }
  return list;
}

// UIKit's constant has this value; the command links no UIKit.
std::string titleColor() {
  auto* bar = send<NSObject*>(host::settings::navigation(), "navigationBar"_sel);
  auto* attributes = send<NSDictionary*>(bar, "titleTextAttributes"_sel);
  return colorText(send<NSObject*>(attributes, "objectForKey:"_sel, "NSColor"_ns));
}

bool hasBarButton() {
  auto* item = send<NSObject*>(host::settings::topPage(), "navigationItem"_sel);
  return send<NSObject*>(item, "rightBarButtonItem"_sel) != nullptr;
}

template <class Fits>
std::vector<const ShownRow*> rowsThat(const ShownPage& page, Fits fits) {
  std::vector<const ShownRow*> found;
  for (const ShownRow* row : page.rows()) {
    if (fits(*row)) found.push_back(row);
  }
  return found;
}

}  // namespace

bool containsText(const std::string& text, const std::string& part) {
  return lowered(text).find(lowered(part)) != std::string::npos;
}

bool isSameText(const std::string& one, const std::string& other) {
  return lowered(one) == lowered(other);
}

std::vector<const ShownRow*> ShownPage::rows() const {
  std::vector<const ShownRow*> all;
  for (const ShownSection& section : sections) {
    for (const ShownRow& row : section.rows) all.push_back(&row);
  }
  return all;
}

ShownPage shownPage() {
  ShownPage page{titles(), titleColor(), hasBarButton(), {}, {}};
  if (NSObject* field = host::settings::searchField())
    page.searched = Row::words(send<NSObject*>(field, "text"_sel));
  std::size_t number = 0;
  for (const auto& section : host::settings::sections()) {
    ShownSection made{section.header, section.footer, {}};
    for (const Row& row : section.rows) made.rows.push_back(shown(row, ++number));
    page.sections.push_back(std::move(made));
  }
  return page;
}

const ShownRow* findRow(const ShownPage& page, const std::string& name) {
  std::size_t number = 0;
  const char* end = name.data() + name.size();
  const auto read = std::from_chars(name.data(), end, number);
  if (read.ec == std::errc{} && read.ptr == end) {
    const auto numbered = rowsThat(page, [&](const ShownRow& r) { return r.number == number; });
    if (!numbered.empty()) return numbered.front();
  }
  const auto keyed = rowsThat(page, [&](const ShownRow& r) { return r.key == name; });
  if (!keyed.empty()) return keyed.front();
  auto titled = rowsThat(page, [&](const ShownRow& r) { return r.title == name; });
  if (titled.empty())
    titled = rowsThat(page, [&](const ShownRow& r) { return isSameText(r.title, name); });
  if (titled.empty())
    titled = rowsThat(page, [&](const ShownRow& r) { return isSameText(r.key, name); });
  if (titled.size() < 2) return titled.empty() ? nullptr : titled.front();
  std::string numbers;
  for (const ShownRow* row : titled)
    numbers.append(numbers.empty() ? "" : ", ").append(std::to_string(row->number));
  throw Failure("several rows have that title (" + numbers + ")", name);
}

const ShownRow& rowNamed(const ShownPage& page, const std::string& name) {
  if (const ShownRow* found = findRow(page, name)) return *found;
  std::vector<std::string> known;
  for (const ShownRow* row : page.rows()) {
    known.push_back(row->title);
    known.push_back(row->key);
  }
  throw Failure("no such row", name + didYouMean(name, known));
}

}  // namespace varnix::cli
