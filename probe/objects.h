// How an object comes to be that a process is asked about: by messages alone, as an application
// makes it.
#pragma once

#include "objc/strong.h"
#include "platform/CoreGraphics.h"
#include "runtime/send.h"

namespace varnix::probe {

/// By initWithFrame:, initWithNibName:bundle: or init, the first that the class answers; views have
/// the frame of the table. Nil for nil.
Strong<NSObject> make(Class cls);
/// Nil where the process has no such class.
Strong<NSObject> make(const char* className);

}  // namespace varnix::probe
