// Controllers that show others: a stack of pages under a bar, and columns side by side.
#include "Foundation/text.h"
#include "UIKit/UIViewController.h"

namespace {

struct NavigationController : host::ContainerViewController {
  NavigationController* initWithRoot(host::ViewController* root) {
    auto* made = send<NavigationController*>(this, "init"_sel);
    if (made != nullptr) made->add(root);
    return made;
  }
  NavigationController* initWithNibAndBar(NSString* name, NSBundle* bundle) {
    initWithNib(name, bundle);
    auto* made = send<UINavigationBar*>(objc_getClass("UINavigationBar"), "alloc"_sel);
    bar = Strong<UINavigationBar>::adopt(send<UINavigationBar*>(made, "init"_sel));
    send<void>(pageView, "addSubview:"_sel, bar.get());
    return this;
  }
  UINavigationBar* barOf() { return bar; }
  NSObject* top() { return held.empty() ? nullptr : held.back().get(); }
  /// What the page on top presents hides it.
  NSObject* visible() {
    NSObject* page = top();
    if (page == nullptr || !send(page, NSObject::respondsToSelector, "presentedViewController"_sel))
      return page;
    auto* presented = send<NSObject*>(page, "presentedViewController"_sel);
    return presented == nullptr ? page : presented;
  }
  void push(host::ViewController* page, bool) { add(page); }
  /// The root stays.
  NSObject* pop(bool) {
    if (held.size() < 2) return nullptr;
    Strong<host::ViewController> popped = held.back();
    removeLast();
    return popped.autorelease();
  }

  Strong<UINavigationBar> bar;
};

}  // namespace

OBJC_CLASS_NAMED(UINavigationController, UIViewController, NavigationController,
                 host::ViewController, objc::Ivar<"_viewControllers", &NavigationController::held>,
                 objc::Ivar<"_navigationBar", &NavigationController::bar>,
                 objc::Method<"initWithRootViewController:", &NavigationController::initWithRoot>,
                 objc::Method<"initWithNibName:bundle:", &NavigationController::initWithNibAndBar>,
                 objc::Method<"dealloc", &NavigationController::dealloc>,
                 objc::Method<"viewControllers", &NavigationController::children>,
                 objc::Method<"setViewControllers:", &NavigationController::setChildren>,
                 objc::Method<"pushViewController:animated:", &NavigationController::push>,
                 objc::Method<"popViewControllerAnimated:", &NavigationController::pop>,
                 objc::Method<"topViewController", &NavigationController::top>,
                 objc::Method<"visibleViewController", &NavigationController::visible>,
                 objc::Method<"navigationBar", &NavigationController::barOf>)

using host::ContainerViewController;

OBJC_CLASS_NAMED(UISplitViewController, UIViewController, ContainerViewController,
                 host::ViewController,
                 objc::Ivar<"_viewControllers", &ContainerViewController::held>,
                 objc::Method<"dealloc", &ContainerViewController::dealloc>,
                 objc::Method<"viewControllers", &ContainerViewController::children>,
                 objc::Method<"setViewControllers:", &ContainerViewController::setChildren>)

namespace host {

void ContainerViewController::dealloc() {
  while (!held.empty()) removeLast();
  ViewController::dealloc();
}

NSArray* ContainerViewController::children() {
  auto* array = NSMutableArray::array();
  for (const auto& child : held) send(array, NSMutableArray::addObject, child);
  return array;
}

void ContainerViewController::setChildren(NSArray* controllers) {
  const auto kept = Strong<NSArray>::retain(controllers);
  while (!held.empty()) removeLast();
  const NSUInteger count = send<NSUInteger>(controllers, "count"_sel);
  for (NSUInteger i = 0; i < count; ++i)
    add(static_cast<ViewController*>(
        objc::as<UIViewController>(send(controllers, NSArray::objectAtIndex, i))));
}

void ContainerViewController::add(ViewController* child) {
  if (child == nullptr || child == this || child->parent == this) return;
  child->parent = this;
  held.push_back(Strong<ViewController>::retain(child));
  send<void>(pageView, "addSubview:"_sel, child->pageView.get());
}

void ContainerViewController::removeLast() {
  ViewController* child = held.back();
  child->parent = nullptr;
  send<void>(child->pageView, "removeFromSuperview"_sel);
  held.pop_back();
}

}  // namespace host
