// Navigation bars. Nil is the system's look.
#include "UIKit/UIView.h"

namespace {
struct NavigationBar : host::View {
  Strong<NSDictionary> titleTextAttributes;
  Strong<UIColor> barTintColor;
};

}  // namespace

OBJC_CLASS_NAMED(
    UINavigationBar, UIView, NavigationBar, host::View,
    objc::Property<"titleTextAttributes", &NavigationBar::titleTextAttributes, objc::Storage::copy>,
    objc::Property<"barTintColor", &NavigationBar::barTintColor>)
