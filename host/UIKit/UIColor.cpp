// Colours: red, green and blue, or grey, each with alpha.
#include "UIKit/UIColor.h"

#include <algorithm>
#include <cmath>

#include "CoreGraphics/objects.h"
#include "Foundation/text.h"

namespace host {

namespace {

struct Hsb {
  CGFloat hue, saturation, brightness;
};

Hsb toHsb(CGFloat r, CGFloat g, CGFloat b) {
  const CGFloat largest = std::max({r, g, b});
  const CGFloat range = largest - std::min({r, g, b});
  if (range <= 0) return {0, 0, largest};
  CGFloat sector = largest == r   ? (g - b) / range
                   : largest == g ? 2 + (b - r) / range
                                  : 4 + (r - g) / range;
  if (sector < 0) sector += 6;
  return {sector / 6, range / largest, largest};
}

CGFloat clamped(CGFloat value) { return std::clamp<CGFloat>(value, 0, 1); }

}  // namespace

Color* Color::make(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha, bool grey) {
  auto* color = static_cast<Color*>(class_createInstance(objc::classOf<UIColor>(), 0));
  color->fill(red, green, blue, alpha, grey);
  return static_cast<Color*>(objc_autorelease(color));
}

void Color::fill(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha, bool grey) {
  r = clamped(red);
  g = clamped(green);
  b = clamped(blue);
  a = clamped(alpha);
  isGrey = grey;
}

Color* Color::withRgb(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  return make(red, green, blue, alpha, false);
}

Color* Color::withWhite(CGFloat white, CGFloat alpha) {
  return make(white, white, white, alpha, true);
}

Color* Color::withHsb(CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha) {
  hue = clamped(hue);
  saturation = clamped(saturation);
  brightness = clamped(brightness);
  auto channel = [&](CGFloat offset) {
    const CGFloat k = std::fmod(offset + hue * 6, CGFloat{6});
    return brightness - brightness * saturation * clamped(std::min(k, 4 - k));
  };
  return make(channel(5), channel(3), channel(1), alpha, false);
}

Color* Color::initRgb(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  fill(red, green, blue, alpha, false);
  return this;
}

Color* Color::initWhite(CGFloat white, CGFloat alpha) {
  fill(white, white, white, alpha, true);
  return this;
}

Color* Color::withAlpha(CGFloat alpha) { return make(r, g, b, alpha, isGrey); }

bool Color::getRgb(CGFloat* red, CGFloat* green, CGFloat* blue, CGFloat* alpha) {
  if (red != nullptr) *red = r;
  if (green != nullptr) *green = g;
  if (blue != nullptr) *blue = b;
  if (alpha != nullptr) *alpha = a;
  return true;
}

bool Color::getHsb(CGFloat* hue, CGFloat* saturation, CGFloat* brightness, CGFloat* alpha) {
  const Hsb hsb = toHsb(r, g, b);
  if (hue != nullptr) *hue = hsb.hue;
  if (saturation != nullptr) *saturation = hsb.saturation;
  if (brightness != nullptr) *brightness = hsb.brightness;
  if (alpha != nullptr) *alpha = a;
  return true;
}

/// A grey answers; another colour only where its components agree, as the platform converts.
bool Color::getWhite(CGFloat* white, CGFloat* alpha) {
  if (!isGrey && (r != g || g != b)) return false;
  if (white != nullptr) *white = r;
  if (alpha != nullptr) *alpha = a;
  return true;
}

NSUInteger Color::componentCount() { return isGrey ? 2 : 4; }

CGColorRef Color::cgColor() {
  auto* color = makeObject<::CGColor>();
  color->count = componentCount();
  if (isGrey) color->components = {r, a};
  else color->components = {r, g, b, a};
  return static_cast<CGColorRef>(objc_autorelease(color));
}

Color* Color::withCgColor(CGColorRef color) {
  if (color == nullptr) return nullptr;
  const auto& c = color->components;
  return color->count == 2 ? withWhite(c[0], c[1]) : withRgb(c[0], c[1], c[2], c[3]);
}

void Color::setAsFill() {
  CGContextSetFillColorWithColor(UIGraphicsGetCurrentContext(), cgColor());
}

void Color::setAsBoth() {
  setAsFill();
  CGContextSetStrokeColorWithColor(UIGraphicsGetCurrentContext(), cgColor());
}

bool Color::equals(NSObject* other) {
  auto* color = static_cast<Color*>(objc::as<UIColor>(other));
  return color != nullptr && isGrey == color->isGrey && r == color->r && g == color->g &&
         b == color->b && a == color->a;
}

NSUInteger Color::hashValue() {
  return std::hash<double>{}(static_cast<double>(r * 3 + g * 5 + b * 7 + a * 11));
}

Color* Color::copy() { return static_cast<Color*>(objc_retain(this)); }

NSString* Color::describe() {
  char words[128];
  if (isGrey) {
    std::snprintf(words, sizeof words, "UIDeviceWhiteColorSpace %g %g", static_cast<double>(r),
                  static_cast<double>(a));
  } else {
    std::snprintf(words, sizeof words, "UIDeviceRGBColorSpace %g %g %g %g", static_cast<double>(r),
                  static_cast<double>(g), static_cast<double>(b), static_cast<double>(a));
  }
  return makeString(words);
}

}  // namespace host

using host::Color;

OBJC_CLASS_NAMED(UIColor, NSObject, Color, NSObject, objc::Ivar<"red", &Color::r>,
                 objc::Ivar<"green", &Color::g>, objc::Ivar<"blue", &Color::b>,
                 objc::Ivar<"alpha", &Color::a>, objc::Ivar<"isGrey", &Color::isGrey>,
                 objc::ClassMethod<"colorWithRed:green:blue:alpha:", &Color::withRgb>,
                 objc::ClassMethod<"colorWithWhite:alpha:", &Color::withWhite>,
                 objc::ClassMethod<"colorWithHue:saturation:brightness:alpha:", &Color::withHsb>,
                 objc::ClassMethod<"whiteColor", &Color::white>,
                 objc::ClassMethod<"blackColor", &Color::black>,
                 objc::ClassMethod<"clearColor", &Color::clear>,
                 objc::ClassMethod<"redColor", &Color::red>,
                 objc::ClassMethod<"blueColor", &Color::blue>,
                 objc::ClassMethod<"yellowColor", &Color::yellow>,
                 objc::Method<"initWithRed:green:blue:alpha:", &Color::initRgb>,
                 objc::Method<"initWithWhite:alpha:", &Color::initWhite>,
                 objc::Method<"colorWithAlphaComponent:", &Color::withAlpha>,
                 objc::Method<"getRed:green:blue:alpha:", &Color::getRgb>,
                 objc::Method<"getHue:saturation:brightness:alpha:", &Color::getHsb>,
                 objc::Method<"getWhite:alpha:", &Color::getWhite>,
                 objc::ClassMethod<"colorWithCGColor:", &Color::withCgColor>,
                 objc::Method<"CGColor", &Color::cgColor>, objc::Method<"set", &Color::setAsBoth>,
                 objc::Method<"setFill", &Color::setAsFill>,
                 objc::Method<"isEqual:", &Color::equals>, objc::Method<"hash", &Color::hashValue>,
                 objc::Method<"copy", &Color::copy>, objc::Method<"description", &Color::describe>)
