// The sheet that composes a post.
#include "UIKit/UIViewController.h"
#include "platform/Social.h"

namespace {

struct Composer : host::ViewController {
  static Composer* make(Class cls, SEL, NSString* service) {
    if (service == nullptr) return nullptr;
    auto* composer = send<Composer*>(send<Composer*>(cls, "alloc"_sel), "init"_sel);
    composer->service = Strong<NSString>::retain(service);
    return static_cast<Composer*>(objc_autorelease(composer));
  }
  bool setText(NSString* value) {
    if (send<NSObject*>(this, "presentingViewController"_sel) != nullptr) return false;
    text = Strong<NSString>::adopt(send<NSString*>(value, "copy"_sel));
    return true;
  }
  NSString* textOf() { return text; }

  Strong<NSString> service;
  Strong<NSString> text;
};

}  // namespace

OBJC_CLASS_NAMED(SLComposeViewController, UIViewController, Composer, host::ViewController,
                 objc::Readable<"serviceType", &Composer::service>,
                 objc::Ivar<"_initialText", &Composer::text>,
                 objc::ClassMethod<"composeViewControllerForServiceType:", &Composer::make>,
                 objc::Method<"setInitialText:", &Composer::setText>,
                 objc::Method<"_initialText", &Composer::textOf>)
