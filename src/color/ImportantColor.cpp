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

ImportantChoice mostSaturated(CQColorScheme* scheme) {
  using enum ImportantRule;
  auto* backgroundColor = send<UIColor*>(scheme, "backgroundColor"_sel);
  auto* primaryColor = send<UIColor*>(scheme, "primaryTextColor"_sel);
  auto* secondaryColor = send<UIColor*>(scheme, "secondaryTextColor"_sel);
  const ImportantChoice text = saturation(secondaryColor) > saturation(primaryColor)
                                   ? ImportantChoice{secondaryColor, secondary, false}
                                   : ImportantChoice{primaryColor, primary, false};
  if (!(saturation(backgroundColor) > saturation(text.color))) return text;
  return {backgroundColor, background, false};
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

ImportantChoice chooseImportantColor(UIImage* image) {
  const ImportantChoice choice =
      mostSaturated(send<CQColorScheme*>(picker(), "colorSchemeFromImage:"_sel, image));
  UIColor* color = choice.color;
  if (color == nullptr) return {vividAverage(image), ImportantRule::average, false};
  const double found = saturation(color);
  if (!(found > 0.1 && found < 0.63)) return choice;
  return {UIColor::colorWithHue(send<CGFloat>(color, "hue"_sel), CGFloat{0.76},
                                send<CGFloat>(color, "brightness"_sel), 1),
          choice.rule, true};
}

UIColor* ImportantColor(UIImage* image) { return chooseImportantColor(image).color; }

}  // namespace varnix::Color
