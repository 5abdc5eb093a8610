// The application's screen: a split view whose last column is a stack of pages.
#include "objc/define.h"
#include "objc/strong.h"
#include "platform/Preferences.h"
#include "runtime/send.h"

namespace host {
namespace {

struct Screen {
  Strong<NSObject> split;
  Strong<NSObject> navigation;
};

Screen& screenOfSettings() {
  static auto* screen = new Screen;
  return *screen;
}

template <class T = NSObject>
Strong<T> fresh(const char* name) {
  return Strong<T>::adopt(send<T*>(send<NSObject*>(objc_getClass(name), "alloc"_sel), "init"_sel));
}

struct SettingsScreen : PSListController {
  static void open() {
    Screen& screen = screenOfSettings();
    if (screen.split != nullptr) return;
    screen.split = fresh("UISplitViewController");
    screen.navigation = fresh("UINavigationController");
    const auto list = fresh("PrefsListController");
    send<void>(list, "setRootController:"_sel, screen.navigation.get());
    send<void>(screen.navigation, "pushViewController:animated:"_sel, list.get(), false);
    NSObject* columns[] = {screen.navigation.get()};
    send<void>(screen.split, "setViewControllers:"_sel, NSArray::arrayWithObjects(columns, 1));
    send<void>(screen.split, "viewWillAppear:"_sel, false);
    send<void>(screen.split, "viewDidAppear:"_sel, false);
  }
  static NSObject* navigation() { return screenOfSettings().navigation; }
};

}  // namespace
}  // namespace host

using host::SettingsScreen;

OBJC_CATEGORY_OF_OWN(PSListController, Screen,
                     objc::ClassMethod<"standIn_openSettings", &SettingsScreen::open>,
                     objc::ClassMethod<"standIn_navigation", &SettingsScreen::navigation>)
