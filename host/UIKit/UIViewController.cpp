#include "UIKit/UIViewController.h"

using host::ViewController;

OBJC_CLASS_NAMED(
    UIViewController, NSObject, ViewController, NSObject,
    objc::Ivar<"_view", &ViewController::pageView>,
    objc::Readable<"parentViewController", &ViewController::parent>,
    objc::Ivar<"_navigationItem", &ViewController::itemInBar>,
    objc::Readable<"title", &ViewController::title>,
    objc::Property<"edgesForExtendedLayout", &ViewController::edges, objc::Storage::assign>,
    objc::Method<"init", &ViewController::init>,
    objc::Method<"initWithNibName:bundle:", &ViewController::initWithNib>,
    objc::Method<"dealloc", &ViewController::dealloc>,
    objc::Method<"view", &ViewController::viewOf>,
    objc::Method<"setView:", &ViewController::setView>,
    objc::Method<"isViewLoaded", &ViewController::isLoaded>,
    objc::Method<"loadView", &ViewController::loadView>,
    objc::Method<"viewDidLoad", &ViewController::viewDidLoad>,
    objc::Method<"viewWillAppear:", &ViewController::appears>,
    objc::Method<"viewDidAppear:", &ViewController::appears>,
    objc::Method<"viewWillDisappear:", &ViewController::appears>,
    objc::Method<"viewDidDisappear:", &ViewController::appears>,
    objc::Method<"setTitle:", &ViewController::setTitle>,
    objc::Method<"splitViewController", &ViewController::splitViewControllerOf>,
    objc::Method<"navigationController", &ViewController::navigationControllerOf>,
    objc::Method<"navigationItem", &ViewController::item>)

namespace host {
namespace {
UIViewController* nearest(ViewController* controller, Class wanted) {
  for (; controller != nullptr; controller = controller->parent) {
    if (wanted != nullptr && send(controller, NSObject::isKindOfClass, wanted)) return controller;
  }
  return nullptr;
}

}  // namespace

ViewController* ViewController::init() {
  return send<ViewController*>(this, "initWithNibName:bundle:"_sel, static_cast<NSString*>(nullptr),
                               static_cast<NSBundle*>(nullptr));
}

ViewController* ViewController::initWithNib(NSString*, NSBundle*) {
  constexpr UIRectEdge kAllEdges = 15;
  edges = kAllEdges;
  return this;
}

UIView* ViewController::viewOf() {
  if (pageView == nullptr) {
    send<void>(this, "loadView"_sel);
    send<void>(this, "viewDidLoad"_sel);
  }
  return pageView;
}

void ViewController::setView(UIView* shown) {
  if (pageView != nullptr) static_cast<host::View*>(pageView.get())->controller = nullptr;
  pageView = Strong<UIView>::retain(shown);
  if (shown != nullptr) static_cast<host::View*>(shown)->controller = this;
}

void ViewController::loadView() {
  auto* made = send<UIView*>(objc_getClass("UIView"), "alloc"_sel);
  const auto plain = Strong<UIView>::adopt(send<UIView*>(made, "init"_sel));
  send<void>(this, "setView:"_sel, plain.get());
}

void ViewController::setTitle(NSString* text) {
  title = Strong<NSString>::adopt(send<NSString*>(text, "copy"_sel));
  send<void>(item(), "setTitle:"_sel, text);
}

void ViewController::dealloc() {
  if (pageView != nullptr) static_cast<host::View*>(pageView.get())->controller = nullptr;
  object_dispose(this);
}

UIViewController* ViewController::splitViewControllerOf() {
  return nearest(this, objc_getClass("UISplitViewController"));
}

UIViewController* ViewController::navigationControllerOf() {
  return nearest(this, objc_getClass("UINavigationController"));
}

NSObject* ViewController::item() {
  if (itemInBar == nullptr) {
    auto* made = send<NSObject*>(objc_getClass("UINavigationItem"), "alloc"_sel);
    itemInBar = Strong<NSObject>::adopt(send<NSObject*>(made, "init"_sel));
  }
  return itemInBar;
}

}  // namespace host
