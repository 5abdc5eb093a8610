// Which settings there are, and which values they take.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "prefs/keys.h"

namespace varnix::cli {

/// The kind of a key's value; nothing for a key of no known form.
std::optional<settings::Kind> kindOf(std::string_view key);

/// The key; one of no known form with what may have been meant, where something is near: "enabeld
/// (did you mean enabled?)".
std::string withNearestKey(std::string_view key);

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
