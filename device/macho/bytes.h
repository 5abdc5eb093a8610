// Files as bytes: reading within bounds, and writing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varnix::device {

/// A view of bytes, least significant first. Reading outside it throws Error.
class Reader {
 public:
  Reader() = default;
  explicit Reader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  size_t size() const { return bytes_.size(); }
  uint8_t u8(uint64_t offset) const { return at(offset, 1)[0]; }
  uint16_t u16(uint64_t offset) const;
  uint32_t u32(uint64_t offset) const;
  uint64_t u64(uint64_t offset) const;
  /// Most significant byte first, as in signatures and in the header of a universal file.
  uint32_t big32(uint64_t offset) const { return __builtin_bswap32(u32(offset)); }
  std::span<const uint8_t> at(uint64_t offset, uint64_t size) const;
  Reader part(uint64_t offset, uint64_t size) const { return Reader(at(offset, size)); }
  /// Up to a NUL, which must be there within 64 KiB.
  std::string_view text(uint64_t offset) const;
  /// A field of `size` bytes, padded with NULs.
  std::string_view fixedText(uint64_t offset, uint64_t size) const;

 private:
  std::span<const uint8_t> bytes_;
};

/// Bytes that are being written, least significant first.
class Writer {
 public:
  size_t size() const { return bytes_.size(); }
  void u8(uint8_t value) { bytes_.push_back(value); }
  void u16(uint16_t value) { number(value, 2); }
  void u32(uint32_t value) { number(value, 4); }
  void u64(uint64_t value) { number(value, 8); }
  /// Most significant byte first, as in signatures.
  void big32(uint32_t value);
  void big64(uint64_t value);
  void uleb(uint64_t value);
  void sleb(int64_t value);
  void bytes(std::span<const uint8_t> more) {
    bytes_.insert(bytes_.end(), more.begin(), more.end());
  }
  /// With a NUL at its end.
  void text(std::string_view text);
  /// Cut or padded to `size` bytes.
  void fixedText(std::string_view text, size_t size);
  /// Zeros up to a multiple of `alignment`.
  void padTo(size_t alignment);
  /// Adds zeros up to `size` bytes. There must be fewer now.
  void fillTo(size_t size);
  std::vector<uint8_t> take() { return std::move(bytes_); }
  const std::vector<uint8_t>& written() const { return bytes_; }

 private:
  void number(uint64_t value, int size);
  std::vector<uint8_t> bytes_;
};

/// Changes a number within bytes.
void put16(std::span<uint8_t> bytes, uint64_t offset, uint16_t value);
void put32(std::span<uint8_t> bytes, uint64_t offset, uint32_t value);
void put64(std::span<uint8_t> bytes, uint64_t offset, uint64_t value);

constexpr uint64_t alignUp(uint64_t value, uint64_t alignment) {
  return (value + alignment - 1) / alignment * alignment;
}

}  // namespace varnix::device
