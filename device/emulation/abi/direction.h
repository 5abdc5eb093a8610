#pragma once

#include <cstdint>

namespace varnix::device {

enum class Direction : uint8_t {
  toLinux,   ///< The device's library calls.
  toDevice,  ///< The device's library is called.
};

}  // namespace varnix::device
