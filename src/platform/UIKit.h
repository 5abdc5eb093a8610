// UIKit: what the library replaces and asks.
#pragma once

#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

struct UIColor : NSObject {
  static UIColor* colorWithRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    return send<UIColor*>(objc::classOf<UIColor>(), "colorWithRed:green:blue:alpha:"_sel, red,
                          green, blue, alpha);
  }

  static UIColor* colorWithHue(CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha) {
    return send<UIColor*>(objc::classOf<UIColor>(), "colorWithHue:saturation:brightness:alpha:"_sel,
                          hue, saturation, brightness, alpha);
  }
  /// Both in the grey colour space.
  static UIColor* whiteColor() {
    return send<UIColor*>(objc::classOf<UIColor>(), "whiteColor"_sel);
  }
  void set() { send<void>(this, "set"_sel); }
  static UIColor* blackColor() {
    return send<UIColor*>(objc::classOf<UIColor>(), "blackColor"_sel);
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

inline constexpr NSInteger UIApplicationStateBackground = 2;

struct UIEdgeInsets {
  CGFloat top, left, bottom, right;
};
OBJC_STRUCT(UIEdgeInsets, CGFloat, CGFloat, CGFloat, CGFloat);

struct UIImage : NSObject {
  static UIImage* imageWithCGImage(CGImageRef image) {
    return send<UIImage*>(objc::classOf<UIImage>(), "imageWithCGImage:"_sel, image);
  }
  /// PNG or JPEG, turned as its orientation says. Nil for anything else.
  UIImage* initWithData(NSData* data) { return send<UIImage*>(this, "initWithData:"_sel, data); }
  /// Stretched to the rectangle of the current image context, in points.
  void drawInRect(CGRect rect) { send<void>(this, "drawInRect:"_sel, rect); }
};

#pragma GCC visibility push(default)
extern "C" {
/// A new image context on top of the thread's stack of them: its size in points, pixels a point (0
/// for the screen's), (0, 0) the upper left corner. An opaque one begins black.
void UIGraphicsBeginImageContextWithOptions(CGSize size, bool opaque, CGFloat scale);
/// What the context on top holds; nil without one.
UIImage* UIGraphicsGetImageFromCurrentImageContext();
void UIGraphicsEndImageContext();
/// Nil without one.
CGContextRef UIGraphicsGetCurrentContext();
/// Whether the user asks for backgrounds that are less see-through.
bool _UIAccessibilityEnhanceBackgroundContrast();
/// Quality 0 to 1. The image's transparent parts are laid on white. Nil for an image without
/// bitmap.
NSData* UIImageJPEGRepresentation(UIImage* image, CGFloat quality);
}
#pragma GCC visibility pop
