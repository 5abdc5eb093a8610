// Stored values as text for people.
#pragma once

#include <string>
#include <string_view>

#include "platform/Foundation.h"

namespace varnix::cli {

/// A value on its own: text as it is, everything else as JSON.
std::string valueText(NSObject* value);

/// One line of a list. Text is quoted, so that "1" and 1 look different.
std::string entryLine(std::string_view key, NSObject* value);

}  // namespace varnix::cli
