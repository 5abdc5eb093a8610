#include "ColorPicker/PFColorAlert.h"

#include <cmath>
#include <cstdio>

#include "Foundation/text.h"

namespace host {
namespace {

Strong<ColorAlert>& cardOnScreen() {
  static auto* card = new Strong<ColorAlert>;
  return *card;
}

}  // namespace

std::string colorDigits(UIColor* color) {
  CGFloat parts[4] = {0, 0, 0, 1};
  send(color, UIColor::getRed, &parts[0], &parts[1], &parts[2], &parts[3]);
  auto byte = [](CGFloat part) {
    constexpr CGFloat kMost = 255;
    return static_cast<unsigned>(std::lround(std::clamp<CGFloat>(part, 0, 1) * kMost));
  };
  char text[32];
  std::snprintf(text, sizeof text, "#%02X%02X%02X:%.6f", byte(parts[0]), byte(parts[1]),
                byte(parts[2]), static_cast<double>(parts[3]));
  return text;
}

void ColorAlert::show(UIColor* start, bool withAlpha, std::function<void(UIColor*)> done) {
  auto* made = send<ColorAlert*>(objc_getClass("PFColorAlert"), "alloc"_sel);
  made = send<ColorAlert*>(made, "init"_sel);
  made->color = Strong<UIColor>::retain(start);
  made->hasAlpha = withAlpha;
  made->chosen = std::move(done);
  cardOnScreen() = Strong<ColorAlert>::adopt(made);
}

NSObject* ColorAlert::shown() { return cardOnScreen(); }

NSString* ColorAlert::digits() { return makeString(colorDigits(color)); }

void ColorAlert::choose(UIColor* wanted) {
  CGFloat alpha = 1;
  if (!hasAlpha) {
    send(color, UIColor::getRed, nullptr, nullptr, nullptr, &alpha);
    wanted = send(wanted, UIColor::colorWithAlphaComponent, alpha);
  }
  color = Strong<UIColor>::retain(wanted);
}

void ColorAlert::close() {
  const auto kept = Strong<ColorAlert>::retain(this);
  cancel();
  if (chosen) std::exchange(chosen, {})(color);
}

void ColorAlert::cancel() {
  if (cardOnScreen().get() == this) cardOnScreen() = nullptr;
}

}  // namespace host

using host::ColorAlert;

OBJC_CLASS_NAMED(PFColorAlert, UIView, ColorAlert, host::View,
                 objc::Ivar<"_color", &ColorAlert::color>,
                 objc::Ivar<"_chosen", &ColorAlert::chosen>,
                 objc::Readable<"standIn_hasAlpha", &ColorAlert::hasAlpha, "_hasAlpha">,
                 objc::ClassMethod<"standIn_shown", &ColorAlert::shown>,
                 objc::Method<"standIn_color", &ColorAlert::digits>,
                 objc::Method<"standIn_choose:", &ColorAlert::choose>,
                 objc::Method<"standIn_close", &ColorAlert::close>,
                 objc::Method<"standIn_cancel", &ColorAlert::cancel>)
