// The stand-in's controls: who is told of what happens to them.
#pragma once

#include "UIKit/UIView.h"

namespace host {

// What a control tells of, a bit each.
inline constexpr NSUInteger kTouchUpInside = 1 << 6;
inline constexpr NSUInteger kValueChanged = 1 << 12;
inline constexpr NSUInteger kEditingChanged = 1 << 17;
inline constexpr NSUInteger kEditingDidEnd = 1 << 18;

struct Control : View {
  /// The target is not kept alive.
  void addTarget(NSObject* target, SEL action, NSUInteger events);
  /// Nil for any target or any action.
  void removeTarget(NSObject* target, SEL action, NSUInteger events);
  /// Sends each action of one of the events to its target, with the control.
  void sendActions(NSUInteger events);
  bool isEnabled() { return !disabled; }
  void setEnabled(bool enabled) { disabled = !enabled; }

  struct Action {
    NSObject* target;
    SEL selector;
    NSUInteger events;
  };
  std::vector<Action> actions;
  bool disabled;
};

}  // namespace host
