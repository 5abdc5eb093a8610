// Notification Centre: a view controller with a backdrop over the whole screen.
#include "UIKit/UIViewController.h"
#include "UIKit/_UIBackdropView.h"
#include "platform/SpringBoard.h"

namespace {

struct NotificationCenter : host::ViewController {
  NotificationCenter* initWithNib(NSString* name, NSBundle* bundle);
  void hostWillPresent() {}
  void contrastDidChange(NSObject*) {}

  Strong<host::BackdropView> backdrop;
};

}  // namespace

OBJC_CLASS_NAMED(
    SBNotificationCenterViewController, UIViewController, NotificationCenter, host::ViewController,
    objc::Readable<"backdropView", &NotificationCenter::backdrop>,
    objc::Method<"initWithNibName:bundle:", &NotificationCenter::initWithNib>,
    objc::Method<"hostWillPresent", &NotificationCenter::hostWillPresent>,
    objc::Method<"_backgroundContrastDidChange:", &NotificationCenter::contrastDidChange>)

NotificationCenter* NotificationCenter::initWithNib(NSString* name, NSBundle* bundle) {
  ViewController::initWithNib(name, bundle);
  constexpr CGRect kScreen{{0, 0}, {375, 667}};
  backdrop = Strong<host::BackdropView>::adopt(host::BackdropView::make(kScreen));
  return this;
}
