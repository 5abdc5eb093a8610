// Calls out of the library on 32-bit Arm whose arguments lie alike on both sides.
#pragma once

namespace varnix::device {

/// Code that calls the function with an even stack.
void* wayOut(void* function);

}  // namespace varnix::device
