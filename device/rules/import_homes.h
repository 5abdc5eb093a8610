// Which library has what the run-times offer.
#pragma once

#include <string_view>

namespace varnix::device {

/// How the name of the library ends that must have a symbol; empty where that is not known.
std::string_view homeOf(std::string_view symbol);

}  // namespace varnix::device
