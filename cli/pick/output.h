// The results in words.
#pragma once

#include <string>

#include "pick/analysis.h"

namespace varnix::cli {

/// An array with an object for each file: its colours, or why there are none.
std::string pickedJson(const pick::Answer& answer);

/// A table for each image that could be read.
std::string pickedText(const pick::Answer& answer, bool withSwatches);

}  // namespace varnix::cli
