#include "pane/example/settings_screen.h"

#include <filesystem>
#include <stdexcept>

#include "common/class_names.h"
#include "common/errors.h"
#include "process/process.h"

namespace varnix::cli {

namespace {

template <class Function>
void find(const std::string& pane, const char* name, Function*& entry) {
  entry = reinterpret_cast<Function*>(host::librarySymbol(pane, name));
  if (entry == nullptr) throw Failure("the pane lacks", name);
}

Strong<UIViewController> make(const char* name) {
  auto* made = send<UIViewController*>(classNamed(name), "alloc"_sel);
  return Strong<UIViewController>::adopt(send<UIViewController*>(made, "init"_sel));
}

}  // namespace

PaneEntries loadPane() {
  // Beside the library, and for the same system.
  const auto extension = std::filesystem::path(host::defaultLibraryPath()).extension();
  const std::string pane = host::ownFolder() / ("libvarnix-example-pane" + extension.string());
  try {
    host::loadLibrary(pane);
  } catch (const std::runtime_error& error) {
    throw Failure("cannot load the pane", error.what());
  }
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
