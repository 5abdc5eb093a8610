#include "hooks/SBNotificationCenterViewController.h"

#include "hooks/backdrop.h"
#include "hooks/track_observer.h"

namespace varnix::notification_center {

constinit objc::Hook<Controller::hostWillPresent> hostWillPresent;
constinit objc::Hook<UIViewController::initWithNibName, Controller> initWithNibName;
constinit objc::Hook<NSObject::dealloc, Controller> dealloc;
constinit objc::Hook<Controller::contrastDidChange> contrastDidChange;

namespace {

constexpr BackdropElement kElement = backdropElement<"nc">(CGFloat(0.6));

}  // namespace

void tint(Controller* self, SEL) {
  tintOrClearBackdrop(send(self, Controller::backdropView), kElement);
}

// Tints first, unlike Control Centre.
NSObject* dyedHostWillPresent(Controller* self, SEL cmd) {
  send(self, colorBackdrop);
  return hostWillPresent.original(self, cmd);
}

UIViewController* dyedInitWithNibName(Controller* self, SEL cmd, NSString* name, NSBundle* bundle) {
  UIViewController* controller = initWithNibName.original(self, cmd, name, bundle);
  observeTrack(controller);
  return controller;
}

void dyedDealloc(Controller* self, SEL cmd) {
  stopObservingTrack(self);
  dealloc.original(self, cmd);
}

void dyedContrastDidChange(Controller* self, SEL cmd, NSObject* notification) {
  contrastDidChange.original(self, cmd, notification);
  send(self, colorBackdrop);
}

}  // namespace varnix::notification_center
