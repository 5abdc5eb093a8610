// What all pages have in common: rows made from the settings, shown anew where those change.
#pragma once

#include "platform/Preferences.h"
#include "settings/scope.h"

struct VNXPage : objc::View<VNXPage, PSListController> {
  /// The rows for the present settings. Every page has its own.
  static constexpr Message<"varnixRows", NSArray*()> rows{};
  /// Shows what has changed, and dyes the page in the present dye. Nothing happens to a page that
  /// is not on top; it catches up when it appears.
  static constexpr Message<"varnixSettingsChanged:", void(NSNotification*)> settingsChanged{};
  /// Takes back what was replaced last.
  static constexpr Message<"varnixUndo:", void(PSSpecifier*)> undo{};
};

namespace varnix::pane {

/// Whose settings the page shows, as the row says that led to it.
Scope scopeOf(PSListController* page);

/// The number that the row which led to the page carries; 0 without one.
NSInteger indexOf(PSListController* page);

}  // namespace varnix::pane
