// Components of a colour.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// Hue, saturation, brightness, alpha, each 0 to 1; all 0 for nil and for a colour without them,
/// such as a pattern.
struct Hsb {
  CGFloat hue, saturation, brightness, alpha;
};

/// What the colour's class returns for the messages below, which may be another extension's.
Hsb hsb(UIColor* color);

/// Red, green and blue in single precision: 0 for nil and for a colour whose CGColor does not have
/// four components. So the platform's white, a grey, counts as black.
struct Rgb {
  float red, green, blue;
};

Rgb rgb(UIColor* color);

// What the library adds to UIColor, unless it already has methods of these names.
inline constexpr objc::Message<UIColor, "hue", CGFloat()> hue{};
inline constexpr objc::Message<UIColor, "saturation", CGFloat()> saturation{};
inline constexpr objc::Message<UIColor, "brightness", CGFloat()> brightness{};
inline constexpr objc::Message<UIColor, "alpha", CGFloat()> alpha{};

}  // namespace varnix::Color
