#include "color/ImportantColor.h"

#include "color/AverageColor.h"
#include "picker/CQColorPicker.h"

namespace varnix::Color {

namespace {

CGFloat saturation(UIColor* color) { return send<CGFloat>(color, "saturation"_sel); }

/// Apart from the class's shared picker, and kept as long as the process.
CQColorPicker* picker() {
  static constinit CQColorPicker* made = nullptr;
  if (made == nullptr) made = send<CQColorPicker*>(objc::alloc<CQColorPicker>(), "init"_sel);
  return made;
}

UIColor* mostSaturated(CQColorScheme* scheme) {
  auto* background = send<UIColor*>(scheme, "backgroundColor"_sel);
  auto* primary = send<UIColor*>(scheme, "primaryTextColor"_sel);
  auto* secondary = send<UIColor*>(scheme, "secondaryTextColor"_sel);
  UIColor* text = saturation(secondary) > saturation(primary) ? secondary : primary;
  return saturation(background) > saturation(text) ? background : text;
}

/// There is always an average; the platform's yellow, meant for a missing one, is asked for and let
/// go.
UIColor* vividAverage(UIImage* image) {
  UIColor* average = AverageColor(image);
  if (average == nullptr) {
    send<UIColor*>(objc::classOf<UIColor>(), "yellowColor"_sel);
    return nullptr;
  }
  return UIColor::colorWithHue(send<CGFloat>(average, "hue"_sel), 1, CGFloat{0.875}, 1);
}

}  // namespace

UIColor* ImportantColor(UIImage* image) {
  UIColor* color =
      mostSaturated(send<CQColorScheme*>(picker(), "colorSchemeFromImage:"_sel, image));
  if (color == nullptr) return vividAverage(image);
  const double found = saturation(color);
  if (!(found > 0.1 && found < 0.63)) return color;
  return UIColor::colorWithHue(send<CGFloat>(color, "hue"_sel), CGFloat{0.76},
                               send<CGFloat>(color, "brightness"_sel), 1);
}

}  // namespace varnix::Color
