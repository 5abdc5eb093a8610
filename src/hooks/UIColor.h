// The marks on colours.
#pragma once

#include "objc/runtime.h"

namespace varnix {

/// Adds isVarnixColor, isVarnixAlbumColor and their setters. Existing methods stay; a nil class is
/// left alone.
void addColorMarks(Class colorClass);

}  // namespace varnix
