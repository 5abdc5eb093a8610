// UIKit: what the library replaces and asks.
#pragma once

#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

struct UIColor : NSObject {
  static UIColor* colorWithRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    return send<UIColor*>(objc::classOf<UIColor>(), "colorWithRed:green:blue:alpha:"_sel, red,
                          green, blue, alpha);
  }

  /// The library's own mark: the colour was handed out for an element.
  void setIsVarnixColor(bool isOurs) { send<void>(this, "setIsVarnixColor:"_sel, isOurs); }
};

struct UIView : NSObject {
  UIColor* tintColor() { return send<UIColor*>(this, "tintColor"_sel); }
  void setTintColor(UIColor* color) { send<void>(this, "setTintColor:"_sel, color); }
  void setOpaque(bool opaque) { send<void>(this, "setOpaque:"_sel, opaque); }
  void setBackgroundColor(UIColor* color) { send<void>(this, "setBackgroundColor:"_sel, color); }
};

struct UISegment : UIView {};
struct UISegmentedControl : UIView {};

struct UISwitch : UIView {
  void setOnTintColor(UIColor* color) { send<void>(this, "setOnTintColor:"_sel, color); }
};

struct UIKeyboard : UIView {};
struct UIKBRenderConfig : NSObject {};
struct UIStatusBarNewUIStyleAttributes : NSObject {};

struct UIApplication : NSObject {
  /// Nil in a process that runs no application.
  static UIApplication* sharedApplication() {
    return send<UIApplication*>(objc::classOf<UIApplication>(), "sharedApplication"_sel);
  }
};
