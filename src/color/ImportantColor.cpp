#include "color/ImportantColor.h"

#include "color/AverageColor.h"
#include "color/components.h"
#include "objc/strong.h"
#include "objc/synchronized.h"
#include "picker/CQColorPicker.h"

namespace varnix::Color {

namespace {

CGFloat saturationOf(UIColor* color) { return hsb(color).saturation; }

/// Apart from the class's shared picker, and kept as long as the process.
CQColorPicker* picker() {
  static constinit CQColorPicker* made = nullptr;
  if (made == nullptr) made = objc::make<CQColorPicker>().leak();
  return made;
}

ImportantChoice mostSaturated(CQColorScheme* scheme) {
  using enum ImportantRule;
  UIColor* backgroundColor = send(scheme, CQColorScheme::backgroundColor);
  UIColor* primaryColor = send(scheme, CQColorScheme::primaryTextColor);
  UIColor* secondaryColor = send(scheme, CQColorScheme::secondaryTextColor);
  const ImportantChoice text = saturationOf(secondaryColor) > saturationOf(primaryColor)
                                   ? ImportantChoice{secondaryColor, secondary, false}
                                   : ImportantChoice{primaryColor, primary, false};
  if (!(saturationOf(backgroundColor) > saturationOf(text.color))) return text;
  return {backgroundColor, background, false};
}

/// There is always an average; the platform's yellow, meant for a missing one, is asked for and let
/// go.
UIColor* vividAverage(UIImage* image) {
  UIColor* average = AverageColor(image);
  if (average == nullptr) {
    UIColor::yellowColor();
    return nullptr;
  }
  return UIColor::colorWithHue(hsb(average).hue, 1, CGFloat{0.875}, 1);
}

}  // namespace

ImportantChoice chooseImportantColor(UIImage* image) {
  // Tints are asked for on several threads, and the picker is one.
  const objc::Synchronized lock(objc::classOf<CQColorPicker>());
  const ImportantChoice choice =
      mostSaturated(send(picker(), CQColorPicker::colorSchemeFromImage, image));
  UIColor* color = choice.color;
  if (color == nullptr) return {vividAverage(image), ImportantRule::average, false};
  const Hsb parts = hsb(color);
  const double found = parts.saturation;
  if (!(found > 0.1 && found < 0.63)) return choice;
  return {UIColor::colorWithHue(parts.hue, CGFloat{0.76}, parts.brightness, 1), choice.rule, true};
}

UIColor* ImportantColor(UIImage* image) { return chooseImportantColor(image).color; }

}  // namespace varnix::Color
