// A report for people.
#pragma once

#include <string>

#include "common/json_forward.h"

namespace varnix::cli {

/// What inspect found, as plain text. Swatches are escape sequences of 24-bit colour.
std::string table(const Json& report, bool withSwatches);

}  // namespace varnix::cli
