// Switches. Their tint is the outline's colour while they are off and is not inherited.
#include "UIKit/UIControl.h"

namespace {
struct Switch : host::Control {
  bool isOn() { return on; }
  /// Tells nobody: only a finger does.
  void setOn(bool value) { on = value; }
  void setOnAnimated(bool value, bool) { setOn(value); }
  /// Acts like a tap; a disabled switch stays as it is.
  void flip() {
    if (disabled) return;
    on = !on;
    send<void>(this, "sendActionsForControlEvents:"_sel, host::kValueChanged);
  }

  Strong<UIColor> tintOfOutline;
  Strong<UIColor> onTintColor;
  bool on;
};

}  // namespace

OBJC_CLASS_NAMED(UISwitch, UIControl, Switch, host::Control,
                 objc::Property<"tintColor", &Switch::tintOfOutline>,
                 objc::Property<"onTintColor", &Switch::onTintColor>,
                 objc::Ivar<"_on", &Switch::on>, objc::Method<"isOn", &Switch::isOn>,
                 objc::Method<"setOn:", &Switch::setOn>,
                 objc::Method<"setOn:animated:", &Switch::setOnAnimated>,
                 objc::Method<"standIn_flip", &Switch::flip>)
