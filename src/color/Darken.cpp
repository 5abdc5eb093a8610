#include "color/Darken.h"

namespace varnix::Color {

UIColor* Darken(UIColor* color, float amount) {
  CGFloat hue = 0;
  CGFloat saturation = 0;
  CGFloat brightness = 0;
  CGFloat alpha = 0;
  if (!send(color, UIColor::getHue, &hue, &saturation, &brightness, &alpha)) return color;
  const float part = amount / 100;
  return UIColor::colorWithHue(hue, saturation * CGFloat{1 + part}, brightness * CGFloat{1 - part},
                               alpha);
}

}  // namespace varnix::Color
