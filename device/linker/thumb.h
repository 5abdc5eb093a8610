// The few Thumb instructions that hold parts of addresses.
#pragma once

#include <cstdint>
#include <span>

namespace varnix::device {

/// The 16 bits that movw or movt loads. Any other instruction throws Error.
uint16_t readMove(std::span<const uint8_t> instruction);
void writeMove(std::span<uint8_t> instruction, uint16_t value);

/// The target of bl, blx or b.w at an address. Any other instruction throws Error.
uint32_t readBranch(std::span<const uint8_t> instruction, uint32_t address);
/// Changes its target, to Thumb code: blx becomes bl. Throws Error if that is out of reach.
void writeBranch(std::span<uint8_t> instruction, uint32_t address, uint32_t target);

/// The stub for calls to another library: jumps to where the pointer at `pointer` points.
inline constexpr uint32_t kStubSize = 16;
void writeStub(std::span<uint8_t> stub, uint32_t address, uint32_t pointer);

}  // namespace varnix::device
