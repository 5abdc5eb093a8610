#include "gallery/screens/questions.h"

#include "platform/UIKit.h"
#include "probe/springboard_situations.h"
#include "probe/surfaces.h"

namespace varnix::screens {

namespace {

Answer textOf(const probe::Answer& answer) {
  const auto* text = std::get_if<std::string>(&answer);
  return text == nullptr ? Answer() : Answer(*text);
}

}  // namespace

NSObject* makeColor(const Color& color) {
  auto part = [](double value) { return static_cast<CGFloat>(value); };
  return UIColor::colorWithRed(part(color.red), part(color.green), part(color.blue),
                               part(color.alpha));
}

Answer answered(NSObject* color) { return textOf(probe::colorAnswer(color)); }
Answer answered(CGColorRef color) { return textOf(probe::plainColorAnswer(color)); }

Answer askColor(NSObject* receiver, const char* getter) {
  return answered(objc::sendDynamic<NSObject*>(receiver, sel_registerName(getter)));
}

Answer askTint(const char* className) { return askColor(make(className), "tintColor"); }

Answer askStatusBar(const Color& wanted) {
  auto* allocated = send<NSObject*>(objc_getClass("UIStatusBarNewUIStyleAttributes"), "alloc"_sel);
  NSObject* request = nullptr;
  const auto attributes = Strong<NSObject>::adopt(
      send<NSObject*>(allocated, "initWithRequest:backgroundColor:foregroundColor:"_sel, request,
                      static_cast<UIColor*>(nullptr), static_cast<UIColor*>(makeColor(wanted))));
  return askColor(attributes, "foregroundColor");
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
