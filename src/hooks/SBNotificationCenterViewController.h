// Notification Centre's backdrop.
#pragma once

#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::notification_center {

using Controller = SBNotificationCenterViewController;

void colorBackdrop(Controller* self, SEL cmd);

extern objc::Hook<NSObject*(Controller*)> hostWillPresent;
NSObject* dyedHostWillPresent(Controller* self, SEL cmd);

extern objc::Hook<Controller*(Controller*, NSString*, NSBundle*)> initWithNibName;
Controller* dyedInitWithNibName(Controller* self, SEL cmd, NSString* name, NSBundle* bundle);

extern objc::Hook<void(Controller*)> dealloc;
void dyedDealloc(Controller* self, SEL cmd);

extern objc::Hook<void(Controller*, NSObject*)> contrastDidChange;
void dyedContrastDidChange(Controller* self, SEL cmd, NSObject* notification);

}  // namespace varnix::notification_center
