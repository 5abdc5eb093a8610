#include "gallery/screens/questions.h"

namespace varnix::screens {

UIColor* makeColor(const Color& color) {
  auto part = [](double value) { return static_cast<CGFloat>(value); };
  return UIColor::colorWithRed(part(color.red), part(color.green), part(color.blue),
                               part(color.alpha));
}

Answer answered(const probe::Answer& answer) {
  const auto* text = std::get_if<std::string>(&answer);
  return text == nullptr ? Answer() : Answer(*text);
}
Answer answered(NSObject* color) { return answered(probe::colorAnswer(color)); }
Answer answered(CGColorRef color) { return answered(probe::plainColorAnswer(color)); }

Answer askColor(NSObject* receiver, const char* getter) {
  return answered(objc::sendDynamic<NSObject*>(receiver, sel_registerName(getter)));
}

Answer askTint(const probe::Situation& situation) {
  return askColor(staged(situation), "tintColor");
}

Answer askStatusBar(const Color& wanted) {
  return askColor(staged(probe::kStatusBar, {.color = makeColor(wanted)}), "foregroundColor");
}

void askBackdrop(Answers& answers, NSObject* surface) {
  NSObject* settings = probe::backdropSettings(surface);
  auto& values = answers.values;
  values["tint"] = askColor(settings, "colorTint");
  values["tint alpha"] = static_cast<double>(send<CGFloat>(settings, "colorTintAlpha"_sel));
  values["tint mask alpha"] =
      static_cast<double>(send<CGFloat>(settings, "colorTintMaskAlpha"_sel));
  values["tinted"] = send<bool>(settings, "usesColorTintView"_sel);
}

}  // namespace varnix::screens
