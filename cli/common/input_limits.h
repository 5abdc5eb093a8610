// How much a command reads.
#pragma once

#include <cstddef>

namespace varnix::cli {

/// Bytes of a picture, a framework or a script's material.
inline constexpr std::size_t kLargestFile = 64 << 20;

}  // namespace varnix::cli
