#include "prefs/parsed_color.h"

#include <cstddef>

namespace varnix {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// 16 for anything but a hexadecimal digit.
unsigned hexValue(char c) {
  if (isDigit(c)) return static_cast<unsigned>(c - '0');
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

/// Reads digits with at most one point, up to the end. Digits beyond a double's precision would
/// make no visible difference.
bool readAlpha(const char* text, double& alpha) {
  constexpr double kFull = 1e14;
  double digits = 0;
  double scale = 1;
  bool hasDigit = false;
  bool hasPoint = false;
  for (; *text != '\0'; ++text) {
    if (*text == '.' && !hasPoint) {
      hasPoint = true;
    } else if (isDigit(*text)) {
      hasDigit = true;
      if (digits >= kFull) continue;
      digits = digits * 10 + (*text - '0');
      if (hasPoint) scale *= 10;
    } else {
      return false;
    }
  }
  alpha = digits < scale ? digits / scale : 1;
  return hasDigit;
}

}  // namespace

bool readColor(const char* text, Rgba& color) {
  if (text == nullptr) return false;
  const bool hasSign = *text == '#';
  if (hasSign) ++text;
  unsigned digits[6];
  std::size_t count = 0;
  for (; hexValue(*text) < 16; ++text) {
    if (count == 6) return false;
    digits[count++] = hexValue(*text);
  }
  if (count != 6 && !(count == 3 && hasSign)) return false;
  // With three digits, each stands for two.
  const std::size_t width = count / 3;
  auto channel = [&](std::size_t i) {
    return (digits[i * width] * 16 + digits[i * width + width - 1]) / 255.0;
  };
  color = {channel(0), channel(1), channel(2), 1};
  return *text == '\0' || (*text == ':' && readAlpha(text + 1, color.alpha));
}

UIColor* parsedColor(NSString* value, NSString* fallback) {
  if (LCPParseColorString != nullptr) return LCPParseColorString(value, fallback);
  for (NSString* string : {value, fallback}) {
    Rgba color{};
    if (!readColor(send(string, NSString::UTF8String), color)) continue;
    return UIColor::colorWithRed(static_cast<CGFloat>(color.red), static_cast<CGFloat>(color.green),
                                 static_cast<CGFloat>(color.blue),
                                 static_cast<CGFloat>(color.alpha));
  }
  return nullptr;
}

}  // namespace varnix
