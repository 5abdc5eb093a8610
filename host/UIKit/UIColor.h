// The stand-in's colour object.
#pragma once

#include "objc/define.h"
#include "platform/UIKit.h"

namespace host {

/// Components are 0 to 1, clamped. A grey has its white in all three.
struct Color : UIColor {
  static Color* make(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha, bool grey);
  static Color* withRgb(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
  static Color* withWhite(CGFloat white, CGFloat alpha);
  static Color* withHsb(CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha);
  static Color* white() { return make(1, 1, 1, 1, true); }
  static Color* black() { return make(0, 0, 0, 1, true); }
  static Color* clear() { return make(0, 0, 0, 0, true); }
  static Color* red() { return make(1, 0, 0, 1, false); }
  static Color* blue() { return make(0, 0, 1, 1, false); }
  static Color* yellow() { return make(1, 1, 0, 1, false); }

  Color* initRgb(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
  Color* initWhite(CGFloat white, CGFloat alpha);
  Color* withAlpha(CGFloat alpha);
  bool getRgb(CGFloat* red, CGFloat* green, CGFloat* blue, CGFloat* alpha);
  bool getHsb(CGFloat* hue, CGFloat* saturation, CGFloat* brightness, CGFloat* alpha);
  bool getWhite(CGFloat* white, CGFloat* alpha);
  /// Four for a colour, two for a grey.
  NSUInteger componentCount();
  CGColorRef cgColor();
  /// Sets the fill colour of the current image context.
  void setAsFill();
  void setAsBoth();
  static Color* withCgColor(CGColorRef color);
  bool equals(NSObject* other);
  NSUInteger hashValue();
  Color* copy();
  NSString* describe();

  CGFloat r, g, b, a;
  bool isGrey;

 private:
  void fill(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha, bool grey);
};

}  // namespace host
