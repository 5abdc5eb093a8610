// Draws shapes into an image of a size in points, at the screen's scale.
#pragma once

#include "platform/UIKit.h"

namespace varnix::pane {

/// (0, 0) is the upper left corner. One at a time.
class Pen {
 public:
  explicit Pen(CGSize size) {
    UIGraphicsBeginImageContextWithOptions(size, false, 0);
    context_ = UIGraphicsGetCurrentContext();
  }
  ~Pen() { UIGraphicsEndImageContext(); }
  Pen(const Pen&) = delete;
  Pen& operator=(const Pen&) = delete;

  /// What was drawn; nil if there was no memory for it.
  UIImage* image() const { return UIGraphicsGetImageFromCurrentImageContext(); }

  // The colour of what comes next; the first from 0 (black) to 1 (white).
  void grey(CGFloat white, CGFloat alpha = 1) { color(rgb(white, white, white, alpha)); }
  void color(UIColor* color) { send(color, UIColor::set); }
  static UIColor* rgb(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha = 1) {
    return UIColor::colorWithRed(red, green, blue, alpha);
  }

  void rect(CGRect rect) { CGContextFillRect(context_, rect); }
  void oval(CGRect rect);
  /// The corners' radius is at most half of the shorter side.
  void rounded(CGRect rect, CGFloat radius);
  void roundedLine(CGRect rect, CGFloat radius, CGFloat width);
  void triangle(CGPoint a, CGPoint b, CGPoint c);

  /// Nothing is drawn outside of it any more.
  void clipToRounded(CGRect rect, CGFloat radius);
  void clipToOval(CGRect rect);

 private:
  void outline(CGRect rect, CGFloat radius);

  CGContextRef context_;
};

}  // namespace varnix::pane
