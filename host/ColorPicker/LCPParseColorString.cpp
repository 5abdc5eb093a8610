// libcolorpicker's parser, kinder than the real one: what it cannot read gives the fallback.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

#include "Foundation/format.h"
#include "Foundation/text.h"
#include "export.h"
#include "platform/ColorPicker.h"

namespace {

struct Rgba {
  double red, green, blue, alpha;
};

std::optional<Rgba> parse(std::string_view text) {
  double alpha = 1;
  if (const std::size_t colon = text.find(':'); colon != std::string_view::npos) {
    const std::string_view part = text.substr(colon + 1);
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), alpha);
    if (error != std::errc() || end != part.data() + part.size() || !(alpha >= 0)) return {};
    alpha = std::min(alpha, 1.0);
    text = text.substr(0, colon);
  }
  if (text.starts_with('#')) text.remove_prefix(1);
  else if (text.size() != 6) return {};
  std::uint32_t bits = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bits, 16);
  if (error != std::errc() || end != text.data() + text.size()) return {};
  if (text.size() == 3) {
    bits = (bits & 0xf00) * 0x1100 | (bits & 0xf0) * 0x110 | (bits & 0xf) * 0x11;
  } else if (text.size() != 6) {
    return {};
  }
  return Rgba{(bits >> 16 & 0xff) / 255.0, (bits >> 8 & 0xff) / 255.0, (bits & 0xff) / 255.0,
              alpha};
}

}  // namespace

HOST_EXPORT UIColor* LCPParseColorString(NSString* value, NSString* fallback) {
  for (NSString* candidate : {value, fallback}) {
    if (const auto color = parse(host::text(candidate))) {
      return UIColor::colorWithRed(
          static_cast<CGFloat>(color->red), static_cast<CGFloat>(color->green),
          static_cast<CGFloat>(color->blue), static_cast<CGFloat>(color->alpha));
    }
  }
  return nullptr;
}
