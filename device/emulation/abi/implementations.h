// Implementations and blocks that cross the boundary.
#pragma once

#include <string_view>

#include "abi/native.h"
#include "objc/runtime.h"

namespace varnix::device {

/// The implementation as the other side calls it; nil for nil. One that comes back is the original
/// again, so that both sides may compare what they have. Ends the process with the method's name if
/// its types cannot be read.
IMP crossed(IMP implementation, const char* types, const char* name, Direction direction);

/// Whether it is a function of a loaded library of the device.
bool isDevices(IMP implementation);

/// The signature of a method. If its types cannot be read, that of nothing for a function of the
/// device's; for any other this ends the process with the method's name.
NativeSignature signatureOf(const char* types, const char* name, bool isDevices);

/// Makes a block of the library callable by this process. Other blocks, and nil, stay as they are.
void adaptBlock(void* block);

/// The replacement for a function of the run-time that takes or returns implementations; nil for
/// other functions.
void* methodFunction(std::string_view name);

/// What the library calls instead of a method that returns an implementation; nil for others.
void* implementationMessage(std::string_view selector);

}  // namespace varnix::device
