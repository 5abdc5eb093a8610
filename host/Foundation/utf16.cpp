#include "Foundation/utf16.h"

#include <cwchar>
#include <locale>

namespace host {

namespace {

constexpr std::string_view kBigEndianMark = "\xfe\xff";
constexpr std::string_view kLittleEndianMark = "\xff\xfe";

/// The units behind the mark. The bytes are an even number.
std::u16string unitsOf(std::string_view bytes) {
  const std::size_t high = bytes.starts_with(kBigEndianMark) ? 0 : 1;
  std::u16string units;
  units.reserve(bytes.size() / 2);
  for (std::size_t at = kBigEndianMark.size(); at < bytes.size(); at += 2) {
    units += static_cast<char16_t>(static_cast<unsigned char>(bytes[at + high]) << 8 |
                                   static_cast<unsigned char>(bytes[at + 1 - high]));
  }
  return units;
}

}  // namespace

bool isUtf16(std::string_view bytes) {
  return bytes.starts_with(kBigEndianMark) || bytes.starts_with(kLittleEndianMark);
}

std::optional<std::string> utf8FromUtf16(std::string_view bytes) {
  if (!isUtf16(bytes) || bytes.size() % 2 != 0) return {};
  const std::u16string units = unitsOf(bytes);
  using Converter = std::codecvt<char16_t, char8_t, std::mbstate_t>;
  const auto& converter = std::use_facet<Converter>(std::locale::classic());
  constexpr std::size_t kMostOfOneUnit = 3;
  std::u8string text(units.size() * kMostOfOneUnit, u8'\0');
  std::mbstate_t state{};
  const char16_t* unread = nullptr;
  char8_t* end = nullptr;
  const auto result = converter.out(state, units.data(), units.data() + units.size(), unread,
                                    text.data(), text.data() + text.size(), end);
  if (result != std::codecvt_base::ok || unread != units.data() + units.size()) return {};
  return std::string(text.data(), end);
}

}  // namespace host
