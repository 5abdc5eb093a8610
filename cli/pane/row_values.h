// Sets a row of a page as its user does: flips its switch, opens its list of choices, its picker.
#pragma once

#include <string>
#include <vector>

#include "pane/shown_page.h"

namespace varnix::cli {

struct RowAndValue {
  std::string row, value;
};

/// "Colour from My colour" in its two parts: the row is the longest beginning that names one, or
/// stands in quotes. Throws Failure for a beginning that names none.
RowAndValue splitRowAndValue(const ShownPage& page, const std::string& words);

/// What a user can choose there: "on" and "off", titles of choices; empty for a row without values,
/// "#" for a colour.
std::vector<std::string> valuesOf(const ShownRow& row);

/// Throws Failure for a row that is disabled or has no value, and UsageError for a value that it
/// cannot take.
void setRow(const ShownRow& row, const std::string& value);

/// Throws Failure if there is a settings file that cannot be read: the pane would replace it.
void requireReadableFile();

}  // namespace varnix::cli
