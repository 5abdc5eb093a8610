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
    return this;
  }
  /// A page below the bar.
  void loadViewWithBar() {
    loadView();
    send<void>(pageView, "addSubview:"_sel, bar.get());
  }
  NSObject* top() { return held.empty() ? nullptr : held.back().get(); }
  /// What the page on top presents hides it.
  NSObject* visible() {
    NSObject* page = top();
    if (page == nullptr || !send(page, NSObject::respondsToSelector, "presentedViewController"_sel))
      return page;
    auto* presented = send<NSObject*>(page, "presentedViewController"_sel);
    return presented == nullptr ? page : presented;
  }
  /// A page that is in the stack already is not pushed again.
  void push(host::ViewController* page, bool animated) {
    if (page == nullptr || page == this || page->parent == this) return;
    if (!isOnScreen) return add(page);
    const auto below = held.empty() ? Strong<host::ViewController>() : held.back();
    add(page);
    const auto above = Strong<host::ViewController>::retain(page);
    replace(below, above, animated, [] {});
  }
  /// The root stays.
  NSObject* pop(bool animated) {
    if (held.size() < 2) return nullptr;
    Strong<host::ViewController> popped = held.back();
    if (!isOnScreen) removeLast();
    else replace(popped, held[held.size() - 2], animated, [this] { removeLast(); });
    return popped.autorelease();
  }
  /// Tells both pages, and does the rest when the one that leaves knows.
  template <class Rest>
  void replace(const Strong<host::ViewController>& leaving,
               const Strong<host::ViewController>& coming, bool animated, Rest rest) {
    send<void>(leaving, "viewWillDisappear:"_sel, animated);
    send<void>(coming, "viewWillAppear:"_sel, animated);
    rest();
    send<void>(send<UIView*>(coming, "view"_sel), "layoutIfNeeded"_sel);
    send<void>(leaving, "viewDidDisappear:"_sel, animated);
    send<void>(coming, "viewDidAppear:"_sel, animated);
  }

  Strong<UINavigationBar> bar;
};

}  // namespace

OBJC_CLASS_NAMED(UINavigationController, UIViewController, NavigationController,
                 host::ViewController, objc::Ivar<"_viewControllers", &NavigationController::held>,
                 objc::Ivar<"_isOnScreen", &NavigationController::isOnScreen>,
                 objc::Ivar<"_showsAll", &NavigationController::showsAll>,
                 objc::Readable<"navigationBar", &NavigationController::bar>,
                 objc::Method<"initWithRootViewController:", &NavigationController::initWithRoot>,
                 objc::Method<"initWithNibName:bundle:", &NavigationController::initWithNibAndBar>,
                 objc::Method<"loadView", &NavigationController::loadViewWithBar>,
                 objc::Method<"dealloc", &NavigationController::dealloc>,
                 objc::Method<"viewWillAppear:", &NavigationController::willAppear>,
                 objc::Method<"viewDidAppear:", &NavigationController::didAppear>,
                 objc::Method<"viewWillDisappear:", &NavigationController::willDisappear>,
                 objc::Method<"viewDidDisappear:", &NavigationController::didDisappear>,
                 objc::Method<"viewControllers", &NavigationController::children>,
                 objc::Method<"setViewControllers:", &NavigationController::setChildren>,
                 objc::Method<"pushViewController:animated:", &NavigationController::push>,
                 objc::Method<"popViewControllerAnimated:", &NavigationController::pop>,
                 objc::Method<"topViewController", &NavigationController::top>,
                 objc::Method<"visibleViewController", &NavigationController::visible>)

using host::ContainerViewController;

OBJC_CLASS_NAMED(UISplitViewController, UIViewController, ContainerViewController,
                 host::ViewController,
                 objc::Ivar<"_viewControllers", &ContainerViewController::held>,
                 objc::Ivar<"_isOnScreen", &ContainerViewController::isOnScreen>,
                 objc::Ivar<"_showsAll", &ContainerViewController::showsAll>,
                 objc::Method<"initWithNibName:bundle:", &ContainerViewController::initShowingAll>,
                 objc::Method<"viewWillAppear:", &ContainerViewController::willAppear>,
                 objc::Method<"viewDidAppear:", &ContainerViewController::didAppear>,
                 objc::Method<"viewWillDisappear:", &ContainerViewController::willDisappear>,
                 objc::Method<"viewDidDisappear:", &ContainerViewController::didDisappear>,
                 objc::Method<"dealloc", &ContainerViewController::dealloc>,
                 objc::Method<"viewControllers", &ContainerViewController::children>,
                 objc::Method<"setViewControllers:", &ContainerViewController::setChildren>)

namespace host {

ViewController* ContainerViewController::initShowingAll(NSString* name, NSBundle* bundle) {
  showsAll = true;
  return initWithNib(name, bundle);
}

template <class Tell>
void ContainerViewController::tellShown(Tell tell) {
  const auto kept = held;
  for (const auto& child : kept) {
    if (showsAll || child.get() == kept.back().get()) tell(child.get());
  }
}

void ContainerViewController::willAppear(bool animated) {
  isOnScreen = true;
  tellShown([&](ViewController* child) { send<void>(child, "viewWillAppear:"_sel, animated); });
}

void ContainerViewController::didAppear(bool animated) {
  tellShown([&](ViewController* child) {
    send<void>(send<UIView*>(child, "view"_sel), "layoutIfNeeded"_sel);
    send<void>(child, "viewDidAppear:"_sel, animated);
  });
}

void ContainerViewController::willDisappear(bool animated) {
  tellShown([&](ViewController* child) { send<void>(child, "viewWillDisappear:"_sel, animated); });
}

void ContainerViewController::didDisappear(bool animated) {
  isOnScreen = false;
  tellShown([&](ViewController* child) { send<void>(child, "viewDidDisappear:"_sel, animated); });
}

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
  send<void>(send<UIView*>(this, "view"_sel), "addSubview:"_sel, send<UIView*>(child, "view"_sel));
}

void ContainerViewController::removeLast() {
  ViewController* child = held.back();
  child->parent = nullptr;
  send<void>(child->pageView, "removeFromSuperview"_sel);
  held.pop_back();
}

}  // namespace host
