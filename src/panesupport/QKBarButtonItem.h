// The share button of a settings pane.
#pragma once

#include "objc/strong.h"
#include "platform/UIKit.h"

/// A bar button with what its sheet needs. Its superclass may be larger than it is declared here,
/// so the members are reached by messages alone.
struct QKBarButtonItem : UIBarButtonItem {
  void dealloc();

  void setShareText(NSString* text) { send<void>(this, "setShareText:"_sel, text); }
  void setContainer(UIViewController* controller) {
    send<void>(this, "setContainer:"_sel, controller);
  }

  Strong<NSString> _shareText;   ///< what the sheet begins with
  UIViewController* _container;  ///< presents the sheet; not kept alive
};
