#include "color/components.h"

namespace varnix::Color {

Hsb hsb(UIColor* color) {
  Hsb answer{};
  const bool hasHsb = send(color, UIColor::getHue, &answer.hue, &answer.saturation,
                           &answer.brightness, &answer.alpha);
  return hasHsb ? answer : Hsb{};
}

Rgb rgb(UIColor* color) {
  CGColorRef cgColor = send(color, UIColor::CGColor);
  if (cgColor == nullptr || CGColorGetNumberOfComponents(cgColor) != 4) return {};
  const CGFloat* components = CGColorGetComponents(cgColor);
  return {static_cast<float>(components[0]), static_cast<float>(components[1]),
          static_cast<float>(components[2])};
}

}  // namespace varnix::Color
