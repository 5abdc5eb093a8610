// Makes an object to ask about: by messages alone, as an application would.
#pragma once

#include "objc/strong.h"
#include "platform/CoreGraphics.h"
#include "runtime/send.h"

namespace varnix::probe {

/// Uses init, which a view passes on to initWithFrame: and a controller to initWithNibName:bundle:.
/// No answer depends on a frame. Nil for nil.
Strong<NSObject> make(Class cls);
/// Nil if the process does not have the class.
Strong<NSObject> make(const char* className);

}  // namespace varnix::probe
