// Dyes a settings pane and undoes it.
#include "platform/UIKit.h"
#include "varnix/pane.h"

namespace {

/// What a pane is shown in. Everything is nil where the pane is in no split view.
struct Shown {
  explicit Shown(UIViewController* pane) {
    auto* split = send<UISplitViewController*>(pane, "splitViewController"_sel);
    auto* columns = send<NSArray*>(split, "viewControllers"_sel);
    auto* navigation = send<UINavigationController*>(columns, "lastObject"_sel);
    bar = send<UINavigationBar*>(navigation, "navigationBar"_sel);
    auto* visible = send<UIViewController*>(navigation, "visibleViewController"_sel);
    page = send<UIView*>(visible, "view"_sel);
  }

  /// A nil colour is none: the system's then.
  void setTitleColor(UIColor* color) const {
    auto* attributes = NSDictionary::dictionaryWithObjectsAndKeys(
        color, NSForegroundColorAttributeName, static_cast<NSObject*>(nullptr));
    send<void>(bar, "setTitleTextAttributes:"_sel, attributes);
  }

  UINavigationBar* bar;
  UIView* page;
};

/// What new controls of the class T look like inside containers of that class.
template <class T>
NSObject* appearanceIn(Class container) {
  return objc::sendVariadic<NSObject*>(objc::classOf<T>(), "appearanceWhenContainedIn:"_sel,
                                       container, Class{nullptr});
}

}  // namespace

void QKSetPrefsTint(UIViewController* controller, UIColor* color) {
  // An appearance without container would be every control's.
  if (controller == nullptr) return;
  const Shown shown(controller);
  shown.setTitleColor(color);
  send<void>(shown.bar, "setTintColor:"_sel, color);
  send<void>(shown.page, "setTintColor:"_sel, color);
  send<void>(shown.page, "setAutoresizesSubviews:"_sel, true);
  if (controller->respondsToSelector("edgesForExtendedLayout"_sel))
    send<void>(controller, "setEdgesForExtendedLayout:"_sel, UIRectEdgeBottom);
  auto* pane = send<Class>(controller, "class"_sel);
  send<void>(appearanceIn<UISegmentedControl>(pane), "setTintColor:"_sel, color);
  send<void>(appearanceIn<UISlider>(pane), "setMaximumTrackTintColor:"_sel, color);
  send<void>(appearanceIn<UISwitch>(pane), "setOnTintColor:"_sel, color);
}

void QKResetPrefsTint(UIViewController* controller) {
  constexpr UIColor* kSystems = nullptr;
  const Shown shown(controller);
  send<void>(shown.bar, "setBarTintColor:"_sel, kSystems);
  send<void>(shown.bar, "setTintColor:"_sel, kSystems);
  shown.setTitleColor(UIColor::blackColor());
  send<void>(shown.page, "setTintColor:"_sel, kSystems);
  send<void>(shown.page, "setAutoresizesSubviews:"_sel, false);
}
