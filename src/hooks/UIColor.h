// What UIColor gets from the library: the marks, components, measures in YUV space.
#pragma once

#include <span>

#include "objc/hook.h"

namespace varnix {

/// In every process that loads the library.
extern const std::span<const objc::Replacement> kColorMarks;
/// In processes that are dyed. Nothing here asks for them: an application or another extension may
/// have methods of these names, with other units.
extern const std::span<const objc::Replacement> kColorMeasures;

}  // namespace varnix
