#include "rules/stub_code.h"

#include <array>

namespace varnix::device {

namespace {

/// A signed number of `bits` bits.
int64_t withSign(uint64_t number, unsigned bits) {
  const uint64_t sign = uint64_t{1} << (bits - 1);
  return static_cast<int64_t>((number ^ sign) - sign);
}

/// The page that an "adrp" at an address gives.
uint64_t pageOf(uint32_t adrp, uint64_t address) {
  const uint64_t pages = uint64_t{adrp >> 5 & 0x7ffff} << 2 | (adrp >> 29 & 3);
  return (address & ~uint64_t{0xfff}) + static_cast<uint64_t>(withSign(pages, 21) * 0x1000);
}

uint64_t immediate12(uint32_t instruction) { return instruction >> 10 & 0xfff; }

template <size_t Count>
std::optional<std::array<uint32_t, Count>> instructions(const Image& image, uint64_t address) {
  const auto place = image.place(address);
  if (!place) return std::nullopt;
  std::array<uint32_t, Count> result;
  for (size_t i = 0; i < Count; ++i) result[i] = image.bytes.u32(*place + 4 * i);
  return result;
}

/// adrp x16, page; ldr x16, [x16, offset]; br x16
std::optional<uint64_t> readStub64(const Image& image, uint64_t address) {
  const auto code = instructions<3>(image, address);
  if (!code || ((*code)[0] & 0x9f00001f) != 0x90000010 || ((*code)[1] & 0xffc003ff) != 0xf9400210 ||
      (*code)[2] != 0xd61f0200)
    return std::nullopt;
  return pageOf((*code)[0], address) + immediate12((*code)[1]) * 8;
}

/// The half of a word that movw or movt loads, in Thumb's two halves of an instruction.
uint32_t movedHalf(uint16_t first, uint16_t second) {
  return (first & 0xfu) << 12 | (first >> 10 & 1u) << 11 | (second >> 12 & 7u) << 8 |
         (second & 0xffu);
}

/// movw ip, low; movt ip, high; add ip, pc; ldr.w pc, [ip]
std::optional<uint64_t> readStub32(const Image& image, uint64_t address) {
  const auto place = image.place(address);
  if (!place) return std::nullopt;
  std::array<uint16_t, 7> code;
  for (size_t i = 0; i < code.size(); ++i) code[i] = image.bytes.u16(*place + 2 * i);
  const auto loadsIp = [&](size_t at, uint16_t kind) {
    return (code[at] & 0xfbf0) == kind && (code[at + 1] >> 8 & 15) == 12;
  };
  if (!loadsIp(0, 0xf240) || !loadsIp(2, 0xf2c0) || code[4] != 0x44fc || code[5] != 0xf8dc ||
      code[6] != 0xf000)
    return std::nullopt;
  const uint32_t distance = movedHalf(code[0], code[1]) | movedHalf(code[2], code[3]) << 16;
  // The program counter reads as the third instruction's address plus four.
  return (distance + address + 8 + 4) & image.addressMask();
}

}  // namespace

std::optional<CommonHelper> readCommonHelper(const Image& image) {
  const SectionHeader* helpers = image.section("__stub_helper");
  if (helpers == nullptr) return std::nullopt;
  // adrp and add x17, the cache; stp x16, x17, [sp, -16]!; adrp and ldr x16, the binder; br x16
  const auto code = instructions<6>(image, helpers->address);
  constexpr uint32_t push = 0xa9bf47f0;
  if (!code || (*code)[2] != push) return std::nullopt;
  return CommonHelper{pageOf((*code)[0], helpers->address) + immediate12((*code)[1]),
                      pageOf((*code)[3], helpers->address + 12) + immediate12((*code)[4]) * 8};
}

std::optional<Helper> readHelper(const Image& image, uint64_t address) {
  // ldr w16, the word after these two; b to the common code
  const auto code = instructions<3>(image, address);
  if (!code || (*code)[0] != 0x18000050 || (*code)[1] >> 26 != 5) return std::nullopt;
  const int64_t distance = withSign((*code)[1] & 0x3ffffff, 26) * 4;
  return Helper{address + 4 + static_cast<uint64_t>(distance), (*code)[2]};
}

std::optional<uint64_t> readStub(const Image& image, uint64_t address) {
  return image.is64 ? readStub64(image, address) : readStub32(image, address);
}

}  // namespace varnix::device
