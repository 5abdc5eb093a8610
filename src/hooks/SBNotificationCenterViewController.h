// Notification Centre's backdrop.
#pragma once

#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::notification_center {

using Controller = SBNotificationCenterViewController;

/// Tints the backdrop.
inline constexpr objc::Message<Controller, "colorBackdrop", void()> colorBackdrop{};
void tint(Controller* self, SEL cmd);

extern objc::Hook<Controller::hostWillPresent> hostWillPresent;
NSObject* dyedHostWillPresent(Controller* self, SEL cmd);

extern objc::Hook<UIViewController::initWithNibName, Controller> initWithNibName;
UIViewController* dyedInitWithNibName(Controller* self, SEL cmd, NSString* name, NSBundle* bundle);

extern objc::Hook<NSObject::dealloc, Controller> dealloc;
void dyedDealloc(Controller* self, SEL cmd);

extern objc::Hook<Controller::contrastDidChange> contrastDidChange;
void dyedContrastDidChange(Controller* self, SEL cmd, NSObject* notification);

}  // namespace varnix::notification_center
