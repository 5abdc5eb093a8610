// The two text colours, from the frame of the background.
#include "color/components.h"
#include "color/yuv.h"
#include "picker/CQColorPicker_object.h"
#include "picker/frame.h"
#include "picker/frame_size.h"

namespace varnix {

using Color::Rgb;
using Color::yComponent;
using picker::Frame;
using picker::FramePixel;

namespace {

// Squared distances, at most 195075.
constexpr NSUInteger kFarFromBackground = 16256;
constexpr NSUInteger kFarFromPrimary = 5852;

constexpr float kBrightnessDifference = 125;
constexpr float kColorDifference = 500;

/// Truncated, not rounded.
NSUInteger wholeNumber(CGFloat component) {
  constexpr CGFloat kRange = 255;
  const CGFloat scaled = component * kRange;
  if (!(scaled > 0)) return 0;
  return scaled < kRange ? static_cast<NSUInteger>(scaled) : NSUInteger{255};
}

CQRGBPixel wholeNumbers(UIColor* color) {
  CGFloat red = 0;
  CGFloat green = 0;
  CGFloat blue = 0;
  send(color, UIColor::getRed, &red, &green, &blue, nullptr);
  return {wholeNumber(red), wholeNumber(green), wholeNumber(blue)};
}

/// What counts as far: a tolerance of 1 is a channel's whole range.
NSUInteger squaredLimit(float tolerance) {
  const float distance = tolerance * 255;
  const float limit = distance * distance;
  constexpr float kBeyondAll = 1e6F;
  return limit < kBeyondAll ? static_cast<NSUInteger>(limit) : static_cast<NSUInteger>(kBeyondAll);
}

}  // namespace

void ColorPicker::findTextColors(CQColorScheme* scheme) {
  const Frame frame(kTotalWidth, kTotalWidth, isContextCurrent());
  UIColor* backgroundColor = send(scheme, CQColorScheme::backgroundColor);
  const CQRGBPixel background = wholeNumbers(backgroundColor);
  auto isFar = [](const CQRGBPixel& from, const CQRGBPixel& color, NSUInteger limit) {
    return squareDistanceInRGBSpaceBetweenColor(from, color) > limit;
  };

  const FramePixel primary = frame.mostFrequent(
      [&](const CQRGBPixel& color) { return isFar(background, color, kFarFromBackground); });
  send(scheme, CQColorScheme::setPrimaryTextColor, primary.opaque());

  const FramePixel secondary = frame.mostFrequent([&](const CQRGBPixel& color) {
    return isFar(background, color, kFarFromBackground) &&
           isFar(primary.color(), color, kFarFromPrimary);
  });
  UIColor* text = secondary.opaque();
  if (!send(self(), CQColorPicker::isSufficienteContrast, backgroundColor, text)) {
    const bool isDark = yComponent(backgroundColor) < 0.5F;
    text = isDark ? UIColor::whiteColor() : UIColor::blackColor();
  }
  send(scheme, CQColorScheme::setSecondaryTextColor, text);
}

bool ColorPicker::isSufficientContrast(UIColor* background, UIColor* foreground) {
  const float brightness = yComponent(background) - yComponent(foreground);
  if (__builtin_fabsf(brightness) * 255 < kBrightnessDifference) return false;
  const Rgb a = Color::rgb(background);
  const Rgb b = Color::rgb(foreground);
  const float color = __builtin_fabsf(a.red - b.red) + __builtin_fabsf(a.green - b.green) +
                      __builtin_fabsf(a.blue - b.blue);
  return color * 255 > kColorDifference;
}

UIColor* ColorPicker::colorFromFrameFiltering(NSUInteger width, NSUInteger height, UIColor* color,
                                              float tolerance) {
  const CQRGBPixel filtered = wholeNumbers(color);
  const NSUInteger limit = squaredLimit(tolerance);
  return Frame(width, height, isContextCurrent())
      .mostFrequent([&](const CQRGBPixel& other) {
        return squareDistanceInRGBSpaceBetweenColor(filtered, other) > limit;
      })
      .opaque();
}

}  // namespace varnix
