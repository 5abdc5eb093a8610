// Which library has which symbols of the run-times.
#pragma once

#include <string_view>

namespace varnix::device {

/// The end of the name of the library that must have a symbol; empty if that is not known.
std::string_view homeOf(std::string_view symbol);

}  // namespace varnix::device
