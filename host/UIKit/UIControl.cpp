#include "UIKit/UIControl.h"

#include <algorithm>

namespace host {

void Control::addTarget(NSObject* target, SEL action, NSUInteger events) {
  actions.push_back({target, action, events});
}

void Control::removeTarget(NSObject* target, SEL action, NSUInteger events) {
  for (Action& known : actions) {
    if ((target == nullptr || known.target == target) &&
        (action == nullptr || known.selector == action))
      known.events &= ~events;
  }
  std::erase_if(actions, [](const Action& known) { return known.events == 0; });
}

void Control::sendActions(NSUInteger events) {
  const auto kept = Strong<NSObject>::retain(this);
  // A target may add and remove targets.
  for (const Action& known : std::vector<Action>(actions)) {
    if ((known.events & events) != 0)
      objc::sendDynamic<void>(known.target, known.selector, static_cast<NSObject*>(this));
  }
}

}  // namespace host

using host::Control;

OBJC_CLASS_NAMED(UIControl, UIView, Control, host::View,
                 objc::Ivar<"_targetActions", &Control::actions>,
                 objc::Ivar<"_disabled", &Control::disabled>,
                 objc::Method<"addTarget:action:forControlEvents:", &Control::addTarget>,
                 objc::Method<"removeTarget:action:forControlEvents:", &Control::removeTarget>,
                 objc::Method<"sendActionsForControlEvents:", &Control::sendActions>,
                 objc::Method<"isEnabled", &Control::isEnabled>,
                 objc::Method<"setEnabled:", &Control::setEnabled>)

/// A class of controls that adds nothing to the behaviour of all controls here.
#define PLAIN_CONTROL_CLASS(Name) OBJC_CLASS_NAMED(Name, UIControl, host::Control, host::Control)

PLAIN_CONTROL_CLASS(UIButton)
PLAIN_CONTROL_CLASS(UISegmentedControl)
