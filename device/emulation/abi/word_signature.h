// Where the arguments of a call are passed on 32-bit Arm, on the device and on Linux, derived from
// the platform's type encodings.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace varnix::device {

/// Bytes of a register and of a place on the stack.
inline constexpr uint32_t kWord = 4;

/// Arguments are a sequence of words: four in registers, the others on the stack. On Linux a 64-bit
/// number begins at an even word, on the device at any.
struct WordSignature {
  /// For each word on the device, its number on Linux. A result in memory has the first word.
  std::vector<uint32_t> places;
  /// The words (numbered as on the device) that hold blocks, which will be called back.
  std::vector<bool> blocks;

  bool isShifted() const;
};

/// Of a function or method, with the result first in the encoding: "v12@0:4f8", "B@:". Throws Error
/// for an invalid encoding, an array, a bit field, and a result in memory with 64-bit numbers that
/// have other offsets on the device.
WordSignature readWordSignature(std::string_view encoding);

}  // namespace varnix::device
