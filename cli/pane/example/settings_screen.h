// The Settings application's screen, with the example pane on it.
#pragma once

#include "objc/strong.h"
#include "pane.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace varnix::cli {

/// The pane's entry points, found in its binary.
struct PaneEntries {
  decltype(&examplePaneDidLoad) didLoad;
  decltype(&examplePaneWillAppear) willAppear;
  decltype(&examplePaneWillDisappear) willDisappear;
  decltype(&examplePaneFooter) footer;
  decltype(&examplePaneRestart) restart;
  decltype(&examplePaneWrite) write;
  decltype(&examplePaneFollow) follow;
  decltype(&examplePaneProfile) profile;
};

/// Loads the example pane that was built beside the command, and the library with it where that is
/// not loaded yet. Throws Failure.
PaneEntries loadPane();

/// A split view whose last column is a navigation controller that shows the pane.
struct SettingsScreen {
  SettingsScreen();

  Strong<UIViewController> pane;
  Strong<UIViewController> navigation;
  Strong<UIViewController> split;
};

/// The colour of the navigation bar above the pane; nil for the system's.
UIColor* barColor(const SettingsScreen& screen);

}  // namespace varnix::cli
