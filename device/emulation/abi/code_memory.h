// Memory for code that is generated at run time.
#pragma once

#include <cstdint>
#include <vector>

namespace varnix::device {

/// Stores the instructions for ever and returns their place; equal ones are stored once. May be
/// called on any thread. Throws Error if there is no memory.
void* placeCode(const std::vector<uint32_t>& code);

}  // namespace varnix::device
