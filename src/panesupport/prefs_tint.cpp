// Dyes a settings pane and undoes it.
#include "platform/UIKit.h"
#include "varnix/pane.h"

namespace {

/// The bar and the page that show a pane. Both are nil if the pane is not in a split view.
struct Shown {
  explicit Shown(UIViewController* pane) {
    UISplitViewController* split = send(pane, UIViewController::splitViewController);
    NSArray* columns = send(split, UISplitViewController::viewControllers);
    auto* navigation = static_cast<UINavigationController*>(send(columns, NSArray::lastObject));
    bar = send(navigation, UINavigationController::navigationBar);
    page = send(send(navigation, UINavigationController::visibleViewController),
                UIViewController::view);
  }

  /// A nil colour means none, which gives the system's.
  void setTitleColor(UIColor* color) const {
    auto* attributes = NSDictionary::dictionaryWithObjectsAndKeys(
        color, NSForegroundColorAttributeName, static_cast<NSObject*>(nullptr));
    send(bar, UINavigationBar::setTitleTextAttributes, attributes);
  }

  UINavigationBar* bar;
  UIView* page;
};

/// The appearance of new controls of class T inside containers of that class.
template <class T>
T* appearanceIn(Class container) {
  constexpr Class kEnd = nullptr;
  return static_cast<T*>(
      send(objc::classOf<T>(), UIView::appearanceWhenContainedIn, container, kEnd));
}

}  // namespace

void QKSetPrefsTint(UIViewController* controller, UIColor* color) {
  // Without a container class the appearance would apply to every control.
  if (controller == nullptr) return;
  const Shown shown(controller);
  shown.setTitleColor(color);
  send(shown.bar, UIView::setTintColor, color);
  send(shown.page, UIView::setTintColor, color);
  send(shown.page, UIView::setAutoresizesSubviews, true);
  if (send(controller, NSObject::respondsToSelector, UIViewController::edgesForExtendedLayout))
    send(controller, UIViewController::setEdgesForExtendedLayout, UIRectEdgeBottom);
  Class pane = send(controller, NSObject::class_);
  send(appearanceIn<UISegmentedControl>(pane), UIView::setTintColor, color);
  send(appearanceIn<UISlider>(pane), UISlider::setMaximumTrackTintColor, color);
  send(appearanceIn<UISwitch>(pane), UISwitch::setOnTintColor, color);
}

void QKResetPrefsTint(UIViewController* controller) {
  constexpr UIColor* kSystems = nullptr;
  const Shown shown(controller);
  send(shown.bar, UINavigationBar::setBarTintColor, kSystems);
  send(shown.bar, UIView::setTintColor, kSystems);
  shown.setTitleColor(UIColor::blackColor());
  send(shown.page, UIView::setTintColor, kSystems);
  send(shown.page, UIView::setAutoresizesSubviews, false);
}
