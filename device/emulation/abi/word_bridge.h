// Code between the two conventions of 32-bit Arm, generated as needed.
#pragma once

#include <cstdint>
#include <vector>

#include "abi/direction.h"
#include "abi/word_signature.h"

namespace varnix::device {

/// The instructions, then the target's address. Every word goes where the other side expects it,
/// and the stack is aligned to eight bytes.
std::vector<uint32_t> bridgeCode(const WordSignature& call, Direction direction, uint32_t target);

}  // namespace varnix::device
