// What the library adds to UIColor: marks, components, measures in YUV space.
#pragma once

#include <span>

#include "objc/hook.h"

namespace varnix {

/// In every process that loads the library.
extern const std::span<const objc::Replacement> kColorMarks;
/// In processes that are dyed. Our own code does not use them: an application or another extension
/// may have methods of these names, with other units.
extern const std::span<const objc::Replacement> kColorMeasures;

}  // namespace varnix
