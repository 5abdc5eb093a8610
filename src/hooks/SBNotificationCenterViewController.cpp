#include "hooks/SBNotificationCenterViewController.h"

#include "hooks/backdrop.h"
#include "hooks/track_observer.h"

namespace varnix::notification_center {

constinit objc::Hook<NSObject*(Controller*)> hostWillPresent;
constinit objc::Hook<Controller*(Controller*, NSString*, NSBundle*)> initWithNibName;
constinit objc::Hook<void(Controller*)> dealloc;
constinit objc::Hook<void(Controller*, NSObject*)> contrastDidChange;

namespace {

constexpr BackdropElement kElement = backdropElement<"ncEnabled", "ncDye">(CGFloat(0.6));

}  // namespace

void colorBackdrop(Controller* self, SEL) {
  tintOrClearBackdrop(send<UIView*>(self, "backdropView"_sel), kElement);
}

// The tint comes first, unlike Control Centre's.
NSObject* dyedHostWillPresent(Controller* self, SEL cmd) {
  send<void>(self, "colorBackdrop"_sel);
  return hostWillPresent.original(self, cmd);
}

Controller* dyedInitWithNibName(Controller* self, SEL cmd, NSString* name, NSBundle* bundle) {
  Controller* controller = initWithNibName.original(self, cmd, name, bundle);
  observeTrack(controller);
  return controller;
}

void dyedDealloc(Controller* self, SEL cmd) {
  stopObservingTrack(self);
  dealloc.original(self, cmd);
}

void dyedContrastDidChange(Controller* self, SEL cmd, NSObject* notification) {
  contrastDidChange.original(self, cmd, notification);
  send<void>(self, "colorBackdrop"_sel);
}

}  // namespace varnix::notification_center
