// Code between the two conventions of 64-bit Arm, generated as needed.
#pragma once

#include <cstdint>
#include <vector>

#include "abi/direction.h"
#include "abi/signature.h"

namespace varnix::device {

/// Whether a call of that kind needs a bridge at all.
bool needsBridge(const CallSignature& call, Direction direction);

/// The instructions, then the target's address. They preserve every register that can hold an
/// argument or a result, except as the conventions require.
std::vector<uint32_t> bridgeCode(const CallSignature& call, Direction direction, uint64_t target);

}  // namespace varnix::device
