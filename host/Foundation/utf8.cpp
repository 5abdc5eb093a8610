#include "Foundation/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace host {

namespace {

/// Length of a run of ASCII at the start, eight bytes at a time.
std::size_t asciiPrefix(std::string_view bytes) {
  std::size_t at = 0;
  for (; at + 8 <= bytes.size(); at += 8) {
    std::uint64_t word;
    std::memcpy(&word, bytes.data() + at, 8);
    if ((word & 0x8080808080808080U) != 0) break;
  }
  while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) ++at;
  return at;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
  std::size_t at = asciiPrefix(bytes);
  while (at < bytes.size()) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    if (lead < 0x80) {
      ++at;
      continue;
    }
    const std::size_t more = lead >= 0xf0 ? 3 : lead >= 0xe0 ? 2 : 1;
    if (lead < 0xc2 || lead > 0xf4 || bytes.size() - at <= more) return false;
    std::uint32_t code = lead & (0x3fU >> more);
    for (std::size_t i = 1; i <= more; ++i) {
      const auto next = static_cast<unsigned char>(bytes[at + i]);
      if ((next & 0xc0) != 0x80) return false;
      code = code << 6 | (next & 0x3fU);
    }
    constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (code < kSmallest[more] || code > 0x10ffff || (code >= 0xd800 && code < 0xe000))
      return false;
    at += more + 1;
  }
  return true;
}

std::size_t utf16Length(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xc0) != 0x80; }) +
      std::count_if(utf8.begin(), utf8.end(),
                    [](char c) { return static_cast<unsigned char>(c) >= 0xf0; }));
}

}  // namespace host
