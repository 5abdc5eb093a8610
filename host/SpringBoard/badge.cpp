// Badges: a red round image that stretches, wrapped for the icons' accessories.
#include "CoreGraphics/CoreGraphics.h"
#include "UIKit/UIImage.h"
#include "UIKit/UIView.h"
#include "platform/SpringBoard.h"

namespace {

struct AccessoryImage : host::Image {
  AccessoryImage* initWithImage(UIImage* image);
};

constexpr CGFloat kDiameter = 24;
constexpr CGFloat kCap = 11.5;

/// A disc with soft edges.
UIImage* redDisc() {
  UIGraphicsBeginImageContextWithOptions({kDiameter, kDiameter}, false, 2);
  CGContextRef context = UIGraphicsGetCurrentContext();
  constexpr CGFloat kGreen = CGFloat(0x3b / 255.0);
  constexpr CGFloat kBlue = CGFloat(0x30 / 255.0);
  UIColor::colorWithRed(1, kGreen, kBlue, 1)->set();
  CGContextAddEllipseInRect(context, {{0, 0}, {kDiameter, kDiameter}});
  CGContextFillPath(context);
  UIImage* disc = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return send<UIImage*>(disc, "resizableImageWithCapInsets:"_sel,
                        UIEdgeInsets{kCap, kCap, kCap, kCap});
}

UIImage* checkoutBackgroundImage() {
  static auto* background = static_cast<UIImage*>(objc_retain(redDisc()));
  return background;
}

}  // namespace

OBJC_CLASS_NAMED(SBIconAccessoryImage, UIImage, AccessoryImage, host::Image,
                 objc::Method<"initWithImage:", &AccessoryImage::initWithImage>)

OBJC_CLASS_NAMED(SBIconBadgeView, UIView, host::View, host::View,
                 objc::ClassMethod<"_checkoutBackgroundImage", &checkoutBackgroundImage>)

AccessoryImage* AccessoryImage::initWithImage(UIImage* image) {
  auto* source = static_cast<host::Image*>(image);
  if (source == nullptr) return this;
  initWithBitmapAt(source->bitmap, source->scale, source->orientationOf());
  capInsets = source->capInsets;
  alignment = source->alignment;
  renderingMode = source->renderingMode;
  resizable = source->resizable;
  return this;
}
