// The share button of a settings pane.
#pragma once

#include "objc/own_class.h"
#include "platform/UIKit.h"

/// A bar button that carries what its sheet needs.
struct QKBarButtonItem : objc::View<QKBarButtonItem, UIBarButtonItem> {
  /// The initial text of the sheet.
  static constexpr Message<"shareText", NSString*()> shareText{};
  static constexpr Message<"setShareText:", void(NSString*)> setShareText{};
  /// The controller that presents the sheet; not kept alive.
  static constexpr Message<"container", UIViewController*()> container{};
  static constexpr Message<"setContainer:", void(UIViewController*)> setContainer{};
};
OBJC_OWN_EXPORTED_CLASS_IF_SUPERCLASS(QKBarButtonItem, UIBarButtonItem);
