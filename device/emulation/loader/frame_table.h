// How to unwind calls, in the form that this system's unwinder reads.
#pragma once

#include <cstdint>
#include <functional>
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
  /// For a function that looks at exceptions: where in the image the pointer to its personality
  /// routine is, and its table of handlers. Zero for others.
  uint64_t personality = 0, handlers = 0;
};

/// The contents of an .eh_frame section, including its end; `base` is added to each start and table
/// of handlers. `routineAt` gives the address of the routine to which the pointer at an offset
/// leads.
std::vector<uint8_t> frameTable(std::span<const CodeFrame> frames, uint64_t base,
                                const std::function<uint64_t(uint64_t offset)>& routineAt = {});

}  // namespace varnix::device
