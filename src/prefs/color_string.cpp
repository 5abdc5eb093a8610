#include "prefs/color_string.h"

namespace varnix {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

/// Digits with at most one point among them, to the end.
bool isAlpha(const char* text) {
  int digits = 0;
  int points = 0;
  for (; *text != '\0'; ++text) {
    if (isDigit(*text)) ++digits;
    else if (*text == '.') ++points;
    else return false;
  }
  return digits > 0 && points <= 1;
}

bool isColorString(const char* text) {
  const bool hasSign = *text == '#';
  if (hasSign) ++text;
  int digits = 0;
  while (isHexDigit(text[digits])) {
    if (++digits > 6) return false;
  }
  if (digits != 6 && !(digits == 3 && hasSign)) return false;
  const char* rest = text + digits;
  return *rest == '\0' || (*rest == ':' && isAlpha(rest + 1));
}

}  // namespace

UIColor* parseColor(NSObject* value, NSString* fallback) {
  auto* string = objc::as<NSString>(value);
  const char* text = string == nullptr ? nullptr : string->UTF8String();
  return LCPParseColorString(text != nullptr && isColorString(text) ? string : nullptr, fallback);
}

}  // namespace varnix
