// The share button of a settings pane.
#pragma once

#include "objc/own_class.h"
#include "platform/UIKit.h"

/// A bar button with what its sheet needs.
struct QKBarButtonItem : objc::View<QKBarButtonItem, UIBarButtonItem> {
  /// What the sheet begins with.
  static constexpr Message<"shareText", NSString*()> shareText{};
  static constexpr Message<"setShareText:", void(NSString*)> setShareText{};
  /// Presents the sheet; not kept alive.
  static constexpr Message<"container", UIViewController*()> container{};
  static constexpr Message<"setContainer:", void(UIViewController*)> setContainer{};
};
OBJC_OWN_EXPORTED_CLASS_IF_SUPERCLASS(QKBarButtonItem, UIBarButtonItem);
