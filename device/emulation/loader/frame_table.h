// How to unwind calls, in the form that this system's unwinder reads.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace varnix::device {

/// A range of 64-bit Arm code whose frames are linked: x29 points to the caller's x29 and x30, in
/// that order, and the caller's stack pointer is just after them.
struct CodeFrame {
  uint64_t start = 0, size = 0;
  /// DWARF's numbers of the registers that are saved below x29, eight bytes each, the first next to
  /// it.
  std::vector<uint8_t> saved;
};

/// The contents of an .eh_frame section, including its end; `base` is added to each start.
std::vector<uint8_t> frameTable(std::span<const CodeFrame> frames, uint64_t base);

}  // namespace varnix::device
