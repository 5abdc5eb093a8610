#include "color/ImportantColor.h"

#include "color/AverageColor.h"
#include "color/components.h"
#include "objc/strong.h"
#include "picker/CQColorPicker.h"

namespace varnix::Color {

namespace {

CGFloat saturationOf(UIColor* color) { return hsb(color).saturation; }

/// Lends a picker for one question, other than the class's shared one. One idle picker is kept as
/// long as the process; two questions at once use two. No thread waits. If the platform raises in
/// between, that picker is lost.
class BorrowedPicker {
 public:
  BorrowedPicker()
      : picker_(
            Strong<CQColorPicker>::adopt(__atomic_exchange_n(&idle_, nullptr, __ATOMIC_SEQ_CST))) {
    if (picker_ == nullptr) picker_ = objc::make<CQColorPicker>();
  }
  BorrowedPicker(const BorrowedPicker&) = delete;
  BorrowedPicker& operator=(const BorrowedPicker&) = delete;
  ~BorrowedPicker() {
    CQColorPicker* nobodys = nullptr;
    if (__atomic_compare_exchange_n(&idle_, &nobodys, picker_.get(), false, __ATOMIC_SEQ_CST,
                                    __ATOMIC_SEQ_CST)) {
      static_cast<void>(picker_.leak());
    }
  }

  CQColorPicker* get() const { return picker_; }

 private:
  static inline constinit CQColorPicker* idle_ = nullptr;

  Strong<CQColorPicker> picker_;
};

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

/// There is always an average. For a missing one the platform's yellow is fetched, and discarded.
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
  const BorrowedPicker picker;
  const ImportantChoice choice =
      mostSaturated(send(picker.get(), CQColorPicker::colorSchemeFromImage, image));
  UIColor* color = choice.color;
  if (color == nullptr) return {vividAverage(image), ImportantRule::average, false};
  const Hsb parts = hsb(color);
  const double found = parts.saturation;
  if (!(found > 0.1 && found < 0.63)) return choice;
  return {UIColor::colorWithHue(parts.hue, CGFloat{0.76}, parts.brightness, 1), choice.rule, true};
}

UIColor* ImportantColor(UIImage* image) { return chooseImportantColor(image).color; }

}  // namespace varnix::Color
