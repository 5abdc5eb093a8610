// Colours in keyed archives. Their components are kept as floats: of the doubles that a colour has
// on a 64-bit process, seven digits come back.
#include <cstdio>
#include <string_view>

#include "Foundation/NSCoder.h"
#include "UIKit/UIColor.h"

namespace {

constexpr NSInteger kRgbSpace = 2;
constexpr NSInteger kGreySpace = 4;

void encodeText(NSCoder* coder, std::string_view text, NSString* key) {
  coder->encodeBytes(text.data(), text.size(), key);
}

struct CodedColor : host::Color {
  void encode(NSCoder* coder) {
    char text[96];
    coder->encodeInteger(static_cast<NSInteger>(componentCount()), "UIColorComponentCount"_ns);
    if (isGrey) {
      coder->encodeFloat(static_cast<float>(r), "UIWhite"_ns);
      std::snprintf(text, sizeof text, "%g", static_cast<double>(r));
      encodeText(coder, text, "NSWhite"_ns);
    } else {
      coder->encodeFloat(static_cast<float>(r), "UIRed"_ns);
      coder->encodeFloat(static_cast<float>(g), "UIGreen"_ns);
      coder->encodeFloat(static_cast<float>(b), "UIBlue"_ns);
      std::snprintf(text, sizeof text, "%g %g %g", static_cast<double>(r), static_cast<double>(g),
                    static_cast<double>(b));
      encodeText(coder, text, "NSRGB"_ns);
    }
    coder->encodeFloat(static_cast<float>(a), "UIAlpha"_ns);
    coder->encodeInteger(isGrey ? kGreySpace : kRgbSpace, "NSColorSpace"_ns);
  }

  /// What the archive lacks reads as zero; without a count, a white alone makes a grey.
  NSObject* initWithCoder(NSCoder* coder) {
    const CGFloat alpha = coder->decodeFloat("UIAlpha"_ns);
    const bool grey = coder->containsValue("UIColorComponentCount"_ns)
                          ? coder->decodeInt("UIColorComponentCount"_ns) == 2
                          : coder->containsValue("UIWhite"_ns);
    if (grey) return initWhite(coder->decodeFloat("UIWhite"_ns), alpha);
    const CGFloat red = coder->decodeFloat("UIRed"_ns);
    const CGFloat green = coder->decodeFloat("UIGreen"_ns);
    return initRgb(red, green, coder->decodeFloat("UIBlue"_ns), alpha);
  }
};

}  // namespace

OBJC_CATEGORY_OF_OWN(UIColor, NSCoding, objc::Method<"encodeWithCoder:", &CodedColor::encode>,
                     objc::Method<"initWithCoder:", &CodedColor::initWithCoder>)
