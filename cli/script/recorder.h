// What is written to surfaces: calls of the platform's own setters are noted.
#pragma once

#include <functional>

#include "common/json_forward.h"
#include "platform/Foundation.h"

namespace varnix::cli {

/// ["selector:", argument ...]. An argument is a colour, null, true for any other object, a number
/// or a boolean; a phase is [x, y], a rectangle [x, y, width, height].
using NoteWrite = std::function<void(NSObject* receiver, Json write)>;

/// Calls the function before each write to a backdrop's settings or to an icon's background; an
/// empty function ends that. The first call must come before any library is loaded, so that what a
/// library passes on is noted.
void recordWrites(NoteWrite note);

}  // namespace varnix::cli
