// Memory for code that is written at run time.
#pragma once

#include <cstdint>
#include <vector>

namespace varnix::device {

/// Where the instructions lie from now on, for ever; equal ones lie there once. From any thread.
/// Throws Error where there is no memory.
void* placeCode(const std::vector<uint32_t>& code);

}  // namespace varnix::device
