// Calls out of the library on 32-bit Arm whose arguments are in the same places on both sides.
#pragma once

namespace varnix::device {

/// Code that calls the function with an aligned stack.
void* wayOut(void* function);

}  // namespace varnix::device
