#include "Foundation/utf8.h"

#include <clocale>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwctype>

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

namespace {

/// Bytes of the character that begins with this one.
std::size_t lengthFrom(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0x80 ? 1 : byte < 0xe0 ? 2 : byte < 0xf0 ? 3 : 4;
}

void append(std::string& text, std::uint32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
    return;
  }
  const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  constexpr unsigned char kLeads[] = {0, 0xc0, 0xe0, 0xf0};
  text += static_cast<char>(kLeads[more] | code >> (6 * more));
  for (int i = more - 1; i >= 0; --i) text += static_cast<char>(0x80 | (code >> (6 * i) & 0x3f));
}

/// Of all languages; the plain one where the system has lost it.
locale_t allLetters() {
  static locale_t locale = [] {
    locale_t found = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
    return found != locale_t{} ? found : newlocale(LC_CTYPE_MASK, "C", locale_t{});
  }();
  return locale;
}

}  // namespace

std::size_t utf8Offset(std::string_view utf8, std::size_t unit, Divided divided) {
  std::size_t at = 0;
  for (std::size_t units = 0; at < utf8.size() && units < unit;) {
    const std::size_t length = lengthFrom(utf8[at]);
    units += length == 4 ? 2 : 1;
    if (units > unit && divided == Divided::before) break;
    at += length;
  }
  return at;
}

std::string lowerCase(std::string_view utf8) {
  std::string lower;
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t length = lengthFrom(utf8[at]);
    std::uint32_t code = static_cast<unsigned char>(utf8[at]);
    if (length > 1) code &= 0xffU >> (length + 1);
    for (std::size_t i = 1; i < length; ++i)
      code = code << 6 | (static_cast<unsigned char>(utf8[at + i]) & 0x3fU);
    append(lower, static_cast<std::uint32_t>(towlower_l(static_cast<wint_t>(code), allLetters())));
    at += length;
  }
  return lower;
}

std::size_t utf16Length(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xc0) != 0x80; }) +
      std::count_if(utf8.begin(), utf8.end(),
                    [](char c) { return static_cast<unsigned char>(c) >= 0xf0; }));
}

}  // namespace host
