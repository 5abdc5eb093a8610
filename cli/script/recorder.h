// What is written to surfaces: the platform's own setters, noted as they are called.
#pragma once

#include <functional>

#include "common/json_forward.h"
#include "platform/Foundation.h"

namespace varnix::cli {

/// ["selector:", argument ...]: a colour, null, true for any other object, a number or a boolean;
/// a phase is [x, y], a rectangle [x, y, width, height].
using NoteWrite = std::function<void(NSObject* receiver, Json write)>;

/// Calls the function before each write to a backdrop's settings or to an icon's background; an
/// empty one ends it. The first call is to come before any library is loaded: then what a library
/// passes on is what is noted.
void recordWrites(NoteWrite note);

}  // namespace varnix::cli
