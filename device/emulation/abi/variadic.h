// Calls with unnamed arguments. On 64-bit devices all of them travel on the stack, a word each; on
// Linux they travel as if they were named.
#pragma once

#include <string_view>

#include "objc/runtime.h"

namespace varnix::device {

/// What the library calls in place of a variadic function; nil for others.
void* variadicFunction(std::string_view name);

/// What takes a variadic message in place of the method.
struct VariadicMessage {
  /// A function of the message's named arguments and the address of the others; nil for a method
  /// that is not variadic.
  void* function = nullptr;
  int named = 0;  ///< Receiver and selector included.
};
VariadicMessage variadicMessage(std::string_view selector);

}  // namespace varnix::device
