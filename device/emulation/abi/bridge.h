// Code between the two conventions of 64-bit Arm, written as it is needed.
#pragma once

#include <cstdint>
#include <vector>

#include "abi/signature.h"

namespace varnix::device {

enum class Direction : uint8_t {
  toLinux,   ///< The device's library calls.
  toDevice,  ///< The device's library is called.
};

/// Whether a call of that kind needs a bridge at all.
bool needsBridge(const CallSignature& call, Direction direction);

/// The instructions, then the target's address. Every register that can hold an argument or a
/// result arrives as it left, but for what the conventions ask.
std::vector<uint32_t> bridgeCode(const CallSignature& call, Direction direction, uint64_t target);

/// A function that takes such a call and makes it the other way; the target itself where no bridge
/// is needed, and nil for nil. Equal ones are made once. They stay for ever.
void* bridge(const CallSignature& call, Direction direction, void* target);

}  // namespace varnix::device
