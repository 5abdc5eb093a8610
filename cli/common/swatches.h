// Colours in a terminal.
#pragma once

#include <string>
#include <string_view>

namespace varnix::cli {

/// Whether to show them: "auto" (standard output is a terminal that TERM does not call dumb, and
/// NO_COLOR is not set), "always" or "never". Throws UsageError for any other word.
bool wantsSwatches(const std::string& choice);

/// Whether $TERM says that the terminal has no colours and cannot move its cursor.
bool isDumbTerminal();

/// Two cells of the colour "#rrggbb..." and a space: an escape sequence of 24-bit colour.
std::string swatch(std::string_view color);

/// Followed by spaces, up to that width.
std::string padded(std::string text, std::size_t width);

}  // namespace varnix::cli
