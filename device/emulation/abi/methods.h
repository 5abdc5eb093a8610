// Messages and methods that cross the boundary.
#pragma once

#include <string_view>

namespace varnix::device {

/// What the library calls in place of a function of the run-time that sends messages, or that hands
/// implementations over; nil for others.
void* methodFunction(std::string_view name);

}  // namespace varnix::device
