// Navigation bars. Nil is the system's look.
#include "UIKit/UIView.h"

namespace {

struct NavigationBar : host::View {
  NSDictionary* titleAttributes() { return titleTextAttributes; }
  void storeTitleAttributes(NSDictionary* attributes) {
    titleTextAttributes = Strong<NSDictionary>::adopt(send<NSDictionary*>(attributes, "copy"_sel));
  }
  UIColor* barTint() { return barTintColor; }
  void storeBarTint(UIColor* color) { barTintColor = Strong<UIColor>::retain(color); }

  Strong<NSDictionary> titleTextAttributes;
  Strong<UIColor> barTintColor;
};

}  // namespace

OBJC_CLASS_NAMED(UINavigationBar, UIView, NavigationBar, host::View,
                 objc::Ivar<"_titleTextAttributes", &NavigationBar::titleTextAttributes>,
                 objc::Ivar<"_barTintColor", &NavigationBar::barTintColor>,
                 objc::Method<"titleTextAttributes", &NavigationBar::titleAttributes>,
                 objc::Method<"setTitleTextAttributes:", &NavigationBar::storeTitleAttributes>,
                 objc::Method<"barTintColor", &NavigationBar::barTint>,
                 objc::Method<"setBarTintColor:", &NavigationBar::storeBarTint>)
