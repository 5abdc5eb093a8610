// Which settings there are, and which values they take.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "prefs/keys.h"

namespace varnix::cli {

/// What a key is.
struct KeyForm {
  settings::Kind kind;
  const settings::Key* plain = nullptr;  ///< the key itself, or the one of which it is an own value
  bool isOwn = false;                    ///< an application's own value
};

/// Nothing for a key of no known form.
std::optional<KeyForm> formOf(std::string_view key);
std::optional<settings::Kind> kindOf(std::string_view key);

/// " (did you mean enabled?)", or empty where nothing is near.
std::string nearestKeyHint(std::string_view key);
/// The key; one of no known form with the hint.
std::string withNearestKey(std::string_view key);

/// "true or false": what a value of that kind looks like.
std::string_view describe(settings::Kind kind);
/// Whether the text on a command line is a value of that kind.
bool fits(settings::Kind kind, std::string_view text);

/// What a value on the command line stands for.
using Value = std::variant<bool, long long, std::string>;

/// True, false and whole numbers are what they look like, anything else is text.
Value plainValue(std::string_view text);

/// The value to store under a known kind; throws UsageError where it is not of that kind.
/// Digits are kept as text where asked to.
Value valueFor(settings::Kind kind, std::string_view text, bool keepText);

/// "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha", a number from 0 to 1.
bool isColor(std::string_view text);

/// The keys that are the same for every application.
std::vector<std::string> keyNames();

/// The table of keys, for people.
std::string keyHelp();

}  // namespace varnix::cli
