#include "settings/known_key.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iterator>

#include "common/errors.h"
#include "common/nearest.h"

namespace varnix::cli {

using settings::Kind;

namespace {

const settings::Key* plainKey(std::string_view key) {
  const auto* found = std::ranges::find_if(
      settings::kKeys, [&](const settings::Key& known) { return key == known.name; });
  return found == std::end(settings::kKeys) ? nullptr : found;
}

/// What may follow an identifier in a key.
std::vector<std::string> applicationSuffixes() {
  std::vector<std::string> suffixes;
  for (const auto& form : settings::kApplicationForms) {
    if (*form.suffix != '\0') suffixes.emplace_back(form.suffix);
  }
  for (const auto& key : settings::kKeys) suffixes.push_back(std::string("_") + key.name);
  return suffixes;
}

template <class Number>
bool readWhole(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

/// Digits and at most one point: no sign, no exponent, neither "inf" nor "nan".
bool isFraction(std::string_view text) {
  const bool plain = std::all_of(text.begin(), text.end(),
                                 [](unsigned char c) { return std::isdigit(c) != 0 || c == '.'; });
  double number = 0;
  return plain && readWhole(text, number) && number <= 1;
}

const char* word(Kind kind) {
  switch (kind) {
    case Kind::boolean:
      return "boolean";
    case Kind::integer:
      return "integer";
    case Kind::colorType:
      return "colour type";
    case Kind::color:
      return "colour";
    case Kind::data:
      return "data";
  }
  return "";
}

std::string helpLine(std::string_view name, Kind kind, std::string_view fallback,
                     std::string_view meaning) {
  std::string line = "  ";
  auto column = [&line](std::string_view text, std::size_t width) {
    line.append(text).append(text.size() < width ? width - text.size() : 1, ' ');
  };
  column(name, 30);
  column(word(kind), 13);
  column(fallback, 9);
  return line.append(meaning).append("\n");
}

}  // namespace

std::optional<KeyForm> formOf(std::string_view key) {
  if (const auto* plain = plainKey(key)) return KeyForm{plain->kind, plain};
  for (const auto& form : settings::kApplicationForms) {
    const std::string_view prefix = form.prefix;
    const std::string_view suffix = form.suffix;
    if (key.size() > prefix.size() + suffix.size() && key.starts_with(prefix) &&
        key.ends_with(suffix)) {
      return KeyForm{form.kind};
    }
  }
  // The identifier itself may contain underscores.
  for (std::size_t at = key.find('_', 1); at != key.npos; at = key.find('_', at + 1)) {
    if (const auto* plain = plainKey(key.substr(at + 1))) return KeyForm{plain->kind, plain, true};
  }
  return {};
}

std::optional<Kind> kindOf(std::string_view key) {
  const auto form = formOf(key);
  return form ? std::optional(form->kind) : std::nullopt;
}

std::string_view describe(Kind kind) {
  switch (kind) {
    case Kind::boolean:
      return "true or false";
    case Kind::integer:
    case Kind::colorType:
      return "a whole number";
    case Kind::color:
      return "#RRGGBB, RRGGBB or #RGB, optionally with :alpha from 0 to 1";
    case Kind::data:
      return "the archive that the library writes";
  }
  return "";
}

bool fits(Kind kind, std::string_view text) {
  const Value value = plainValue(text);
  switch (kind) {
    case Kind::boolean:
      return std::holds_alternative<bool>(value) || text == "0" || text == "1";
    case Kind::integer:
    case Kind::colorType:
      return std::holds_alternative<long long>(value);
    case Kind::color:
      return isColor(text);
    case Kind::data:
      return false;
  }
  return false;
}

std::string nearestKeyHint(std::string_view key) {
  constexpr std::size_t kLongestKey = 300;
  if (key.size() > kLongestKey) return "";
  std::optional<Nearest> found = nearest(key, keyNames());
  auto offer = [&found](std::optional<Nearest> other, std::string_view before) {
    if (!other || (found && other->distance >= found->distance)) return;
    found = Nearest{std::string(before) + other->word, other->distance};
  };
  // It is not known where the identifier ends, so every underscore is tried.
  for (std::size_t at = key.find('_', 1); at != key.npos; at = key.find('_', at + 1)) {
    offer(nearest(key.substr(at), applicationSuffixes()), key.substr(0, at));
    for (const auto& form : settings::kApplicationForms) {
      const std::string_view prefix = form.prefix;
      const std::string_view identifier = key.substr(at + 1);
      if (prefix.empty() || identifier.empty()) continue;
      offer(nearest(key.substr(0, at + 1), {form.prefix}), "");
      if (found && found->word == prefix) found->word += identifier;
    }
  }
  return didYouMean(found);
}

std::string withNearestKey(std::string_view key) {
  return std::string(key) + (formOf(key) ? "" : nearestKeyHint(key));
}

Value plainValue(std::string_view text) {
  if (text == "true") return true;
  if (text == "false") return false;
  long long number = 0;
  if (readWhole(text, number)) return number;
  return std::string(text);
}

Value valueFor(Kind kind, std::string_view text, bool keepText) {
  if (!fits(kind, text)) {
    throw UsageError("wrong value (wanted: " + std::string(describe(kind)) + ")",
                     std::string(text));
  }
  // A colour of digits only is still stored as text.
  if (keepText || kind == Kind::color) return std::string(text);
  return plainValue(text);
}

bool isColor(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon != text.npos) {
    if (!isFraction(text.substr(colon + 1))) return false;
    text = text.substr(0, colon);
  }
  const bool hasSign = text.starts_with('#');
  if (hasSign) text.remove_prefix(1);
  if (text.size() != 6 && !(hasSign && text.size() == 3)) return false;
  return std::all_of(text.begin(), text.end(),
                     [](unsigned char c) { return std::isxdigit(c) != 0; });
}

std::vector<std::string> keyNames() {
  std::vector<std::string> names;
  for (const auto& key : settings::kKeys) names.emplace_back(key.name);
  return names;
}

std::string keyHelp() {
  std::string text = "Keys:\n";
  for (const auto& key : settings::kKeys) {
    text += helpLine(key.name, key.kind, key.fallback, key.meaning);
  }
  text += "For one application, by its bundle identifier ID:\n";
  for (const auto& form : settings::kApplicationForms) {
    text += helpLine(std::string(form.prefix) + "ID" + form.suffix, form.kind, "", form.meaning);
  }
  text += "  ID_KEY                        as KEY                that application's own value\n";
  text +=
      "A colour type is 1 (not dyed), 2 (own colour) or anything else (follows the dye).\n"
      "A colour is #RRGGBB, RRGGBB or #RGB, optionally with :alpha from 0 to 1.";
  return text;
}

}  // namespace varnix::cli
