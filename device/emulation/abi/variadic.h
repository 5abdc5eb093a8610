// Calls with unnamed arguments. On 64-bit devices all of them travel on the stack, a word each; on
// Linux they travel as if they were named. On 32-bit ones they travel as if named too, but that
// numbers of 64 bits begin at any word.
#pragma once

#include <string_view>

namespace varnix::device {

/// What the library calls in place of a variadic function; nil for others. It may be called with
/// the device's conventions.
void* variadicFunction(std::string_view name);

/// Takes a variadic message in place of the method, and may change the words that hold its
/// arguments: where the call goes on. Nil for a method that may be called as it is.
void* variadicMessage(std::string_view selector, void** words, void* stack);

/// Of those, the ones whose pointers end with a nil, on 64-bit Arm.
void* listMessage(std::string_view selector, void** registers, void* stack);

}  // namespace varnix::device
