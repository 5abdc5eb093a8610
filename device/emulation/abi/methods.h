// Messages and methods that cross the boundary.
#pragma once

#include <string_view>

namespace varnix::device {

/// What the library calls in place of a function that sends messages; nil for others. It may be
/// called with the device's conventions.
void* messenger(std::string_view name);

/// What stands for a function of the run-time that hands implementations over; nil for others.
void* methodFunction(std::string_view name);

}  // namespace varnix::device
