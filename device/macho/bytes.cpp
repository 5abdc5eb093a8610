#include "macho/bytes.h"

#include <algorithm>

#include "macho/error.h"

namespace varnix::device {

std::span<const uint8_t> Reader::at(uint64_t offset, uint64_t size) const {
  if (offset > bytes_.size() || size > bytes_.size() - offset)
    throw Error("the file is cut short: " + std::to_string(size) + " bytes at " +
                std::to_string(offset) + " of " + std::to_string(bytes_.size()));
  return bytes_.subspan(offset, size);
}

uint16_t Reader::u16(uint64_t offset) const {
  const auto field = at(offset, 2);
  return static_cast<uint16_t>(field[0] | field[1] << 8);
}

uint32_t Reader::u32(uint64_t offset) const {
  const auto field = at(offset, 4);
  return field[0] | uint32_t{field[1]} << 8 | uint32_t{field[2]} << 16 | uint32_t{field[3]} << 24;
}

uint64_t Reader::u64(uint64_t offset) const {
  return u32(offset) | uint64_t{u32(offset + 4)} << 32;
}

std::string_view Reader::text(uint64_t offset) const {
  constexpr size_t longest = 1 << 16;
  const auto rest = at(offset, 0).data();
  const size_t limit = std::min(longest, bytes_.size() - static_cast<size_t>(offset));
  const auto end = std::find(rest, rest + limit, uint8_t{0});
  if (end == rest + limit) throw Error("a name at " + std::to_string(offset) + " has no end");
  return {reinterpret_cast<const char*>(rest), static_cast<size_t>(end - rest)};
}

std::string_view Reader::fixedText(uint64_t offset, uint64_t size) const {
  const auto field = at(offset, size);
  const auto end = std::find(field.begin(), field.end(), uint8_t{0});
  return {reinterpret_cast<const char*>(field.data()), static_cast<size_t>(end - field.begin())};
}

void Writer::number(uint64_t value, int size) {
  for (int i = 0; i < size; ++i) u8(static_cast<uint8_t>(value >> 8 * i));
}

void Writer::big32(uint32_t value) {
  for (int i = 3; i >= 0; --i) u8(static_cast<uint8_t>(value >> 8 * i));
}

void Writer::big64(uint64_t value) {
  big32(static_cast<uint32_t>(value >> 32));
  big32(static_cast<uint32_t>(value));
}

void Writer::uleb(uint64_t value) {
  do {
    const auto low = static_cast<uint8_t>(value & 0x7f);
    value >>= 7;
    u8(value != 0 ? low | 0x80 : low);
  } while (value != 0);
}

void Writer::sleb(int64_t value) {
  for (bool more = true; more;) {
    const auto low = static_cast<uint8_t>(value & 0x7f);
    value >>= 7;
    more = !((value == 0 && (low & 0x40) == 0) || (value == -1 && (low & 0x40) != 0));
    u8(more ? low | 0x80 : low);
  }
}

void Writer::text(std::string_view text) {
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  u8(0);
}

void Writer::fixedText(std::string_view text, size_t size) {
  const size_t end = bytes_.size() + size;
  bytes_.insert(bytes_.end(), text.begin(), text.begin() + std::min(size, text.size()));
  bytes_.resize(end);
}

void Writer::padTo(size_t alignment) { bytes_.resize(alignUp(bytes_.size(), alignment)); }

void Writer::fillTo(size_t size) {
  if (size < bytes_.size()) throw Error("what is written does not fit where it belongs");
  bytes_.resize(size);
}

void put16(std::span<uint8_t> bytes, uint64_t offset, uint16_t value) {
  if (offset > bytes.size() || bytes.size() - offset < 2) throw Error("a number ends outside");
  bytes[offset] = static_cast<uint8_t>(value);
  bytes[offset + 1] = static_cast<uint8_t>(value >> 8);
}

void put32(std::span<uint8_t> bytes, uint64_t offset, uint32_t value) {
  put16(bytes, offset, static_cast<uint16_t>(value));
  put16(bytes, offset + 2, static_cast<uint16_t>(value >> 16));
}

void put64(std::span<uint8_t> bytes, uint64_t offset, uint64_t value) {
  put32(bytes, offset, static_cast<uint32_t>(value));
  put32(bytes, offset + 4, static_cast<uint32_t>(value >> 32));
}

}  // namespace varnix::device
