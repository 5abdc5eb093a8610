// The stand-in's view, which the other views build on.
#pragma once

#include <vector>

#include "export.h"
#include "objc/define.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace host {
struct View : UIView {
  View* init();
  HOST_EXPORT View* initWithFrame(CGRect rect);
  void dealloc();

  void addSubview(UIView* child);
  void removeFromSuperview();

  /// The view's own tint, else its superview's, else the platform's blue.
  UIColor* inheritedTint();
  void storeTint(UIColor* color) { tint = Strong<UIColor>::retain(color); }
  /// What setTintColor: stored; nil if the view inherits.
  void storeOpaque(bool value) { opaque = value; }
  void storeBackground(UIColor* color) { backgroundColor = Strong<UIColor>::retain(color); }
  void layoutSubviews() {}
  /// Lays out the view and all below it, as the screen does before it shows them.
  void layOut();
  void sizeToFit() {}
  CGRect bounds() { return {{0, 0}, frame.size}; }
  /// There is no keyboard to send away.
  bool resignFirstResponder() { return true; }
  NSArray* children();

  CGRect frame;
  View* superview;  ///< not kept alive
  std::vector<Strong<UIView>> subviews;
  Strong<UIColor> tint;
  Strong<UIColor> backgroundColor;
  NSObject* controller;  ///< the view's controller, not kept alive; nil for most
  bool opaque;
  bool autoresizesSubviews;
};

}  // namespace host

/// A class of views that adds nothing to the behaviour of all views here.
#define PLAIN_VIEW_CLASS(Name, SuperName) OBJC_CLASS_NAMED(Name, SuperName, host::View, host::View)
