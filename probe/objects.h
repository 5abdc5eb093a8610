// How an object comes to be that a process is asked about: by messages alone, as an application
// makes it.
#pragma once

#include "objc/strong.h"
#include "platform/CoreGraphics.h"
#include "runtime/send.h"

namespace varnix::probe {

/// By init, which a view passes on to initWithFrame: and a controller to initWithNibName:bundle:.
/// No answer depends on a frame. Nil for nil.
Strong<NSObject> make(Class cls);
/// Nil where the process has no such class.
Strong<NSObject> make(const char* className);

}  // namespace varnix::probe
