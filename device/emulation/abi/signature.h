// Where the arguments of a call are passed on 64-bit Arm, on the device and on Linux, derived from
// the platform's type encodings.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "macho/type.h"

namespace varnix::device {

/// An argument on the stack, for lack of registers. On the device it takes its own size, on Linux
/// whole words.
struct StackArgument {
  uint32_t size = 0;
  uint32_t deviceOffset = 0, linuxOffset = 0;  ///< From the stack pointer at the call.
};

/// On the device the caller extends a small argument and the callee a small result; on Linux the
/// reader does.
struct CallSignature {
  Small result = Small::none;
  std::array<Small, 8> registers{};  ///< By the number of the register.
  std::vector<StackArgument> stack;
  uint32_t deviceStackSize = 0, linuxStackSize = 0;
  /// The registers that hold blocks, which will be called back.
  std::array<bool, 8> blocks{};

  bool hasSmallArgument() const;
  bool hasPackedStack() const;
};

/// Of a function or method, with the result first in the encoding: "v24@0:8B16", "B@:". Throws
/// Error for an invalid encoding, a union, an array or a bit field.
CallSignature readSignature(std::string_view encoding);

}  // namespace varnix::device
