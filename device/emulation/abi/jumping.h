// Exceptions on 32-bit Arm. Those of the device do not walk the stack: a function that handles some
// registers a context, and the one that throws jumps there.
#pragma once

#include <string_view>

namespace varnix::device {

/// What the library calls instead of a function that throws, catches, or registers a context; nil
/// for other functions. On 64-bit Arm always nil: the system's own unwinder does it.
void* exceptionFunction(std::string_view name);

/// From now on, exceptions that this process's own code throws below the library's frames reach the
/// handlers there.
void offerHandlers();

}  // namespace varnix::device
