// The settings that exist, and the values that they take.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "prefs/keys.h"

namespace varnix::cli {

/// What is known about a key.
struct KeyForm {
  settings::Kind kind;
  const settings::Key* plain =
      nullptr;         ///< the key itself, or the key of which it is an application's value
  bool isOwn = false;  ///< a value for one application
};

/// Nothing for a key of no known form.
std::optional<KeyForm> formOf(std::string_view key);
std::optional<settings::Kind> kindOf(std::string_view key);

/// " (did you mean enabled?)", or empty if nothing is near.
std::string nearestKeyHint(std::string_view key);
/// The key; followed by the hint if its form is unknown.
std::string withNearestKey(std::string_view key);

/// "true or false": what values of that kind look like.
std::string_view describe(settings::Kind kind);
/// Whether a text from the command line is a value of that kind.
bool fits(settings::Kind kind, std::string_view text);

/// What a text on the command line is stored as.
using Value = std::variant<bool, long long, std::string>;

/// True, false and whole numbers become what they look like; anything else is text.
Value plainValue(std::string_view text);

/// The value to store for a known kind. Throws UsageError if the text is not of that kind. keepText
/// stores digits as text.
Value valueFor(settings::Kind kind, std::string_view text, bool keepText);

/// "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha", a number from 0 to 1.
bool isColor(std::string_view text);

/// The keys that apply to all applications.
std::vector<std::string> keyNames();

/// The table of keys, for people.
std::string keyHelp();

}  // namespace varnix::cli
