// Calls with unnamed arguments. 64-bit devices pass all of them on the stack, a word each; Linux
// passes them as if they were named. 32-bit devices also pass them as if named, except that 64-bit
// numbers begin at any word.
#pragma once

#include <string_view>

namespace varnix::device {

/// What the library calls instead of a variadic function; nil for other functions. It can be called
/// with the device's conventions.
void* variadicFunction(std::string_view name);

/// Where a variadic message goes instead of the method. It may change the words that hold the
/// arguments. Nil for a method that can be called unchanged.
void* variadicMessage(std::string_view selector, void** words, void* stack);

/// Those of them whose list of pointers ends with a nil, on 64-bit Arm.
void* listMessage(std::string_view selector, void** registers, void* stack);

}  // namespace varnix::device
