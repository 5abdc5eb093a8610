// Lets exceptions pass through the device's code.
#pragma once

#include <cstdint>
#include <span>

#include "loader/frame_table.h"

namespace varnix::device {

/// Registers frames with the process's unwinder, for ever; `base` is added to their starts. Does
/// nothing on 32-bit Arm: the device's exceptions jump there, and frames have no description.
void describeFrames(std::span<const CodeFrame> frames, const void* base);

}  // namespace varnix::device
