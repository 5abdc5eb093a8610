#include "linker/thumb.h"

#include <algorithm>
#include <array>

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {
namespace {

uint16_t half(std::span<const uint8_t> instruction, size_t index) {
  return Reader(instruction).u16(index * 2);
}

constexpr uint16_t kLink = 0xd000, kLinkExchange = 0xc000, kJump = 0x9000, kBranchMask = 0xd000;

/// Which of the three kinds of branch, by its second half.
uint16_t branchKind(std::span<const uint8_t> instruction) {
  const uint16_t kind = half(instruction, 1) & kBranchMask;
  const bool isBranch = (half(instruction, 0) & 0xf800) == 0xf000;
  if (!isBranch || (kind != kLink && kind != kLinkExchange && kind != kJump))
    throw Error("a branch relocation at what is neither bl, blx nor b.w");
  return kind;
}

}  // namespace

// movw, movt: 11110 i 10 t100 imm4 | 0 imm3 rd imm8
uint16_t readMove(std::span<const uint8_t> instruction) {
  const uint16_t first = half(instruction, 0), second = half(instruction, 1);
  if ((first & 0xfb70) != 0xf240 || (second & 0x8000) != 0)
    throw Error("a half of an address at what is neither movw nor movt");
  return static_cast<uint16_t>((first & 0xf) << 12 | (first >> 10 & 1) << 11 |
                               (second >> 12 & 7) << 8 | (second & 0xff));
}

void writeMove(std::span<uint8_t> instruction, uint16_t value) {
  const int first = half(instruction, 0) & ~0x040f, second = half(instruction, 1) & ~0x70ff;
  put16(instruction, 0, static_cast<uint16_t>(first | value >> 12 | (value >> 11 & 1) << 10));
  put16(instruction, 2, static_cast<uint16_t>(second | (value >> 8 & 7) << 12 | (value & 0xff)));
}

// bl, blx, b.w: 11110 s imm10 | 1 l j1 x j2 imm11, where i1 = !(j1 ^ s) and i2 = !(j2 ^ s).
uint32_t readBranch(std::span<const uint8_t> instruction, uint32_t address) {
  const uint16_t kind = branchKind(instruction);
  const uint32_t first = half(instruction, 0), second = half(instruction, 1);
  const uint32_t sign = first >> 10 & 1;
  const uint32_t i1 = ~(second >> 13 ^ sign) & 1, i2 = ~(second >> 11 ^ sign) & 1;
  const uint32_t displacement = (sign != 0 ? 0xff000000 : 0) | i1 << 23 | i2 << 22 |
                                (first & 0x3ff) << 12 | (second & 0x7ff) << 1;
  const uint32_t from = address + 4;
  return (kind == kLinkExchange ? from & ~3u : from) + displacement;
}

void writeBranch(std::span<uint8_t> instruction, uint32_t address, uint32_t target) {
  const uint16_t kind = branchKind(instruction) == kJump ? kJump : kLink;
  const uint32_t displacement = target - (address + 4);
  const auto distance = static_cast<int32_t>(displacement);
  if (distance < -(1 << 24) || distance >= 1 << 24) throw Error("a branch leads out of reach");
  const uint32_t sign = displacement >> 31;
  const uint32_t j1 = ~(displacement >> 23 ^ sign) & 1, j2 = ~(displacement >> 22 ^ sign) & 1;
  put16(instruction, 0, static_cast<uint16_t>(0xf000 | sign << 10 | (displacement >> 12 & 0x3ff)));
  put16(instruction, 2,
        static_cast<uint16_t>(kind | j1 << 13 | j2 << 11 | (displacement >> 1 & 0x7ff)));
}

void writeStub(std::span<uint8_t> stub, uint32_t address, uint32_t pointer) {
  constexpr std::array<uint8_t, kStubSize> code{
      0x40, 0xf2, 0x00, 0x0c,  // movw ip, #low half of the distance
      0xc0, 0xf2, 0x00, 0x0c,  // movt ip, #high half
      0xfc, 0x44,              // add ip, pc
      0xdc, 0xf8, 0x00, 0xf0,  // ldr.w pc, [ip]
      0x00, 0xbf,              // nop
  };
  std::copy(code.begin(), code.end(), stub.begin());
  // The program counter reads as the place of "add" plus four.
  const uint32_t distance = pointer - (address + 8 + 4);
  writeMove(stub.subspan(0, 4), static_cast<uint16_t>(distance));
  writeMove(stub.subspan(4, 4), static_cast<uint16_t>(distance >> 16));
}

}  // namespace varnix::device
