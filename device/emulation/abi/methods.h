// Messages and methods that cross the boundary.
#pragma once

#include <string_view>

namespace varnix::device {

/// What the library calls instead of a function that sends messages; nil for other functions. It
/// can be called with the device's conventions.
void* messenger(std::string_view name);

}  // namespace varnix::device
