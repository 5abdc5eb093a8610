// What lets an exception pass the device's code.
#pragma once

#include <cstdint>
#include <span>

#include "loader/frame_table.h"

namespace varnix::device {

/// Tells the process's unwinder of frames, for ever; `base` is added to their starts. On 32-bit Arm
/// nothing happens: exceptions of the device jump there, and frames have no description.
void describeFrames(std::span<const CodeFrame> frames, const void* base);

}  // namespace varnix::device
