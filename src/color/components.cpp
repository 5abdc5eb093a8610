#include "color/components.h"

#include "objc/define.h"

namespace varnix::Color {

Hsb hsb(UIColor* color) {
  Hsb answer{};
  const bool hasHsb = send<bool>(color, "getHue:saturation:brightness:alpha:"_sel, &answer.hue,
                                 &answer.saturation, &answer.brightness, &answer.alpha);
  return hasHsb ? answer : Hsb{};
}

Rgb rgb(UIColor* color) {
  auto cgColor = send<CGColorRef>(color, "CGColor"_sel);
  if (cgColor == nullptr || CGColorGetNumberOfComponents(cgColor) != 4) return {};
  const CGFloat* components = CGColorGetComponents(cgColor);
  return {static_cast<float>(components[0]), static_cast<float>(components[1]),
          static_cast<float>(components[2])};
}

namespace {

template <CGFloat Hsb::* Component>
CGFloat component(UIColor* self, SEL) {
  return hsb(self).*Component;
}

}  // namespace

}  // namespace varnix::Color

using objc::Method;
using varnix::Color::component;
using varnix::Color::Hsb;

OBJC_CATEGORY(UIColor, VarnixComponents, Method<"hue", &component<&Hsb::hue>>,
              Method<"saturation", &component<&Hsb::saturation>>,
              Method<"brightness", &component<&Hsb::brightness>>,
              Method<"alpha", &component<&Hsb::alpha>>)
