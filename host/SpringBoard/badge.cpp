// Badges: a red round image that stretches, wrapped for the icons' accessories.
#include "CoreGraphics/CoreGraphics.h"
#include "UIKit/UIImage.h"
#include "UIKit/UIView.h"
#include "platform/SpringBoard.h"

namespace {

struct AccessoryImage : host::Image {
  AccessoryImage* initWithImage(UIImage* image);

  Strong<NSObject> _countedMapKey;  ///< under this key the pool of images takes it back
};

constexpr CGFloat kDiameter = 24;
constexpr CGFloat kCap = 11.5;

/// A disc with soft edges.
UIImage* redDisc() {
  UIGraphicsBeginImageContextWithOptions({kDiameter, kDiameter}, false, 2);
  CGContextRef context = UIGraphicsGetCurrentContext();
  constexpr CGFloat kGreen = CGFloat(0x3b / 255.0);
  constexpr CGFloat kBlue = CGFloat(0x30 / 255.0);
  send(UIColor::colorWithRed(1, kGreen, kBlue, 1), UIColor::set);
  CGContextAddEllipseInRect(context, {{0, 0}, {kDiameter, kDiameter}});
  CGContextFillPath(context);
  UIImage* disc = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return send<UIImage*>(disc, "resizableImageWithCapInsets:"_sel,
                        UIEdgeInsets{kCap, kCap, kCap, kCap});
}

SBIconAccessoryImage* checkoutBackgroundImage();

}  // namespace

OBJC_CLASS_NAMED(SBIconAccessoryImage, UIImage, AccessoryImage, host::Image,
                 objc::Property<"countedMapKey", &AccessoryImage::_countedMapKey>,
                 objc::Method<"initWithImage:", &AccessoryImage::initWithImage>)

OBJC_CLASS_NAMED(SBIconBadgeView, UIView, host::View, host::View,
                 objc::ClassMethod<"_checkoutBackgroundImage", &checkoutBackgroundImage>)

namespace {

SBIconAccessoryImage* checkoutBackgroundImage() {
  static auto* background = [] {
    auto* raw =
        static_cast<AccessoryImage*>(class_createInstance(&objc_class_SBIconAccessoryImage, 0));
    raw->_countedMapKey = Strong<NSObject>::retain("badge background"_ns);
    return static_cast<SBIconAccessoryImage*>(
        static_cast<NSObject*>(raw->initWithImage(redDisc())));
  }();
  return background;
}

}  // namespace

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
