// Reads the platform's type encodings, for the sizes of the values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace varnix::device {

/// An integer that fills a part of its register.
enum class Small : uint8_t { none, unsigned8, signed8, unsigned16, signed16 };

struct Type {
  uint32_t size = 0, alignment = 1;  ///< A number's alignment is its size.
  Small small = Small::none;
  char scalar = 0;  ///< For a structure with members of one kind: that kind. Zero if they differ.
  uint32_t count = 0;  ///< Scalars within.
  bool isStructure = false, isBlock = false;
  bool hasUnion = false;  ///< Is a union, or a structure with one.
  /// On 32 bits, of a structure: for each of its words on the device, the word's number where
  /// 64-bit numbers are aligned to their size, as they are here. The device aligns them to four
  /// bytes.
  std::vector<uint32_t> words{};
};

/// A method's or function's types, one after the other.
class Encoding {
 public:
  /// Words are pointers' sizes: 4 or 8.
  Encoding(std::string_view text, uint32_t word) : text_(text), word_(word) {}

  bool atEnd() const { return at_ == text_.size(); }
  size_t position() const { return at_; }

  /// An argument's or a result's type, and the offset that may follow it. Throws Error for an
  /// invalid encoding, an array, and a structure with bit fields.
  Type next();
  /// A variable's type, which may be an array. A bit field has no size.
  Type nextVariable();

 private:
  char take();
  bool takeIf(char c);
  Type value(int depth);
  Type object();
  Type pointer(int depth);
  Type complex(int depth);
  Type array(int depth);
  Type structure(int depth);
  Type unionOf(int depth);
  uint32_t number();
  void skip(char open, char close);
  void skipQuoted();

  std::string_view text_;
  size_t at_ = 0;
  uint32_t word_;
};

}  // namespace varnix::device
