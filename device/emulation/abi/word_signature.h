// Where the arguments of a call travel on 32-bit Arm, on the device and on Linux, told from the
// platform's type encodings.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace varnix::device {

/// Bytes of a register and of a place on the stack.
inline constexpr uint32_t kWord = 4;

/// Arguments are words in a row: four in registers, the others on the stack. On Linux a number of
/// 64 bits begins at an even word, on the device at any.
struct WordSignature {
  /// Of each word on the device, its number on Linux. A result in memory has the first word.
  std::vector<uint32_t> places;
  /// The words, as the device counts, that hold blocks, which are called back.
  std::vector<bool> blocks;

  bool isShifted() const;
};

/// Of a function or method whose result stands first in the encoding: "v12@0:4f8", "B@:". Throws
/// Error for an encoding that is none, or of a union, an array or a bit field, or of a structure
/// with numbers of 64 bits, which has other offsets on the device.
WordSignature readWordSignature(std::string_view encoding);

}  // namespace varnix::device
