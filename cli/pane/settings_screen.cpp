#include "pane/settings_screen.h"

#include <dlfcn.h>

#include <filesystem>

#include "errors.h"
#include "process/process.h"

namespace varnix::cli {

namespace {

template <class Function>
void find(void* pane, const char* name, Function*& entry) {
  entry = reinterpret_cast<Function*>(dlsym(pane, name));
  if (entry == nullptr) throw Failure("the pane lacks", name);
}

Strong<UIViewController> make(const char* name) {
  Class cls = objc_getClass(name);
  if (cls == nullptr) throw Failure("this process has no such class", name);
  return Strong<UIViewController>::adopt(
      send<UIViewController*>(send<UIViewController*>(cls, "alloc"_sel), "init"_sel));
}

}  // namespace

PaneEntries loadPane() {
  const auto file =
      std::filesystem::path(host::defaultLibraryPath()).parent_path() / "libexamplepane.so";
  void* pane = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (pane == nullptr) throw Failure("cannot load the pane", dlerror());
  PaneEntries entries{};
  find(pane, "examplePaneDidLoad", entries.didLoad);
  find(pane, "examplePaneWillAppear", entries.willAppear);
  find(pane, "examplePaneWillDisappear", entries.willDisappear);
  find(pane, "examplePaneFooter", entries.footer);
  find(pane, "examplePaneRestart", entries.restart);
  find(pane, "examplePaneWrite", entries.write);
  find(pane, "examplePaneFollow", entries.follow);
  find(pane, "examplePaneProfile", entries.profile);
  return entries;
}

SettingsScreen::SettingsScreen()
    : pane(make("UIViewController")),
      navigation(make("UINavigationController")),
      split(make("UISplitViewController")) {
  send<void>(navigation, "pushViewController:animated:"_sel, pane.get(), false);
  NSObject* columns[] = {navigation.get()};
  send<void>(split, "setViewControllers:"_sel, NSArray::arrayWithObjects(columns, 1));
}

// UIKit's constant has this value; the command links no UIKit.
UIColor* barColor(const SettingsScreen& screen) {
  auto* bar = send<NSObject*>(screen.navigation, "navigationBar"_sel);
  auto* attributes = send<NSDictionary*>(bar, "titleTextAttributes"_sel);
  return static_cast<UIColor*>(send<NSObject*>(attributes, "objectForKey:"_sel, "NSColor"_ns));
}

}  // namespace varnix::cli
