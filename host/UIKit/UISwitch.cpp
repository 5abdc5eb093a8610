// Switches. Their tint is the outline's colour while they are off and is not inherited.
#include "UIKit/UIView.h"

namespace {
struct Switch : host::View {
  Strong<UIColor> tintOfOutline;
  Strong<UIColor> onTintColor;
};

}  // namespace

OBJC_CLASS_NAMED(UISwitch, UIControl, Switch, host::View,
                 objc::Property<"tintColor", &Switch::tintOfOutline>,
                 objc::Property<"onTintColor", &Switch::onTintColor>)
