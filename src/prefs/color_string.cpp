#include "prefs/color_string.h"

#include "prefs/parsed_color.h"

namespace varnix {

UIColor* parseColor(NSObject* value, NSString* fallback) {
  auto* string = objc::as<NSString>(value);
  const char* text = send(string, NSString::UTF8String);
  Rgba color{};
  return parsedColor(readColor(text, color) ? string : nullptr, fallback);
}

}  // namespace varnix
