// Reads bytes and numbers one after another from a part of a file.
#pragma once

#include <cstdint>
#include <string_view>

#include "macho/bytes.h"

namespace varnix::device {

/// Reading outside the part, or a number of more than 64 bits, throws Error.
class Cursor {
 public:
  explicit Cursor(Reader part, uint64_t at = 0) : part_(part), at_(at) {}

  bool atEnd() const { return at_ >= part_.size(); }
  uint64_t position() const { return at_; }
  uint8_t u8() { return part_.u8(at_++); }
  uint64_t uleb();
  int64_t sleb();
  /// Up to a NUL, which is skipped.
  std::string_view text();

 private:
  Reader part_;
  uint64_t at_;
};

}  // namespace varnix::device
