// Colours as people write them.
#pragma once

#include <cstdint>
#include <string>

namespace varnix::drawing {

/// "#rrggbb".
inline std::string hex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (const std::uint8_t part : {red, green, blue}) {
    text += kDigits[part >> 4];
    text += kDigits[part & 15];
  }
  return text;
}

/// "#rrggbbaa".
inline std::string hex(std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                       std::uint8_t alpha) {
  return hex(red, green, blue) + hex(alpha, 0, 0).substr(1, 2);
}

}  // namespace varnix::drawing
