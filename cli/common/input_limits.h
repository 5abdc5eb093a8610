// How much a command reads.
#pragma once

#include <cstddef>

namespace varnix::cli {

/// Bytes of a picture, a framework or a file that a script uses.
inline constexpr std::size_t kLargestFile = 64 << 20;

}  // namespace varnix::cli
