#include "macho/cursor.h"

#include "macho/error.h"

namespace varnix::device {

uint64_t Cursor::uleb() {
  uint64_t value = 0;
  for (unsigned shift = 0;; shift += 7) {
    const uint64_t byte = u8();
    const uint64_t bits = byte & 0x7f;
    if (shift > 63 || (shift == 63 && bits > 1)) throw Error("a number has more than 64 bits");
    value |= bits << shift;
    if ((byte & 0x80) == 0) return value;
  }
}

int64_t Cursor::sleb() {
  uint64_t value = 0;
  for (unsigned shift = 0;;) {
    const uint64_t byte = u8();
    if (shift > 63) throw Error("a number has more than 64 bits");
    value |= (byte & 0x7f) << shift;
    shift += 7;
    if ((byte & 0x80) != 0) continue;
    if (shift < 64 && (byte & 0x40) != 0) value |= ~uint64_t{0} << shift;
    return static_cast<int64_t>(value);
  }
}

std::string_view Cursor::text() {
  const std::string_view words = part_.text(at_);
  at_ += words.size() + 1;
  return words;
}

}  // namespace varnix::device
