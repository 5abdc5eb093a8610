#include "UIKit/UIViewController.h"

using host::ViewController;

OBJC_CLASS_NAMED(UIViewController, NSObject, ViewController, NSObject,
                 objc::Ivar<"_view", &ViewController::view>,
                 objc::Method<"init", &ViewController::init>,
                 objc::Method<"initWithNibName:bundle:", &ViewController::initWithNib>,
                 objc::Method<"view", &ViewController::viewOf>)

namespace host {

ViewController* ViewController::init() {
  return send<ViewController*>(this, "initWithNibName:bundle:"_sel, static_cast<NSString*>(nullptr),
                               static_cast<NSBundle*>(nullptr));
}

ViewController* ViewController::initWithNib(NSString*, NSBundle*) {
  auto* made = send<UIView*>(objc_getClass("UIView"), "alloc"_sel);
  view = Strong<UIView>::adopt(send<UIView*>(made, "init"_sel));
  return this;
}

}  // namespace host
