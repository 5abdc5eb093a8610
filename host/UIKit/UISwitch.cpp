// Switches. Their tint is the outline's colour while they are off and is not inherited.
#include "UIKit/UIView.h"

namespace {

struct Switch : host::View {
  UIColor* outline() { return tintOfOutline; }
  void storeOutline(UIColor* color) { tintOfOutline = Strong<UIColor>::retain(color); }
  UIColor* onTint() { return onTintColor; }
  void storeOnTint(UIColor* color) { onTintColor = Strong<UIColor>::retain(color); }

  Strong<UIColor> tintOfOutline;
  Strong<UIColor> onTintColor;
};

}  // namespace

OBJC_CLASS_NAMED(UISwitch, UIControl, Switch, host::View,
                 objc::Ivar<"_tintColor", &Switch::tintOfOutline>,
                 objc::Ivar<"_onTintColor", &Switch::onTintColor>,
                 objc::Method<"tintColor", &Switch::outline>,
                 objc::Method<"setTintColor:", &Switch::storeOutline>,
                 objc::Method<"onTintColor", &Switch::onTint>,
                 objc::Method<"setOnTintColor:", &Switch::storeOnTint>)
