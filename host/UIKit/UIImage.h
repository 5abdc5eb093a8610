// The stand-in's image.
#pragma once

#include "CoreGraphics/objects.h"
#include "export.h"
#include "platform/UIKit.h"

namespace host {

/// Which way up an image is to be shown.
enum class Orientation : NSInteger {
  up,
  down,
  left,
  right,
  upMirrored,
  downMirrored,
  leftMirrored,
  rightMirrored,
};

struct Image : UIImage {
  static UIImage* withBitmap(CGImageRef image);
  static UIImage* withBitmapAt(CGImageRef image, CGFloat scale, NSInteger orientation);
  static UIImage* withData(NSData* data);
  static UIImage* withDataAt(NSData* data, CGFloat scale);
  /// A path of the device.
  static UIImage* withFile(NSString* path);

  Image* initWithBitmap(CGImageRef image);
  HOST_EXPORT Image* initWithBitmapAt(CGImageRef image, CGFloat scale, NSInteger orientation);
  /// For data that is not an image: nil, and the receiver is released.
  Image* initWithData(NSData* data);
  Image* initWithDataAt(NSData* data, CGFloat scale);

  /// In points, as shown.
  CGSize sizeOf();
  /// Pixels per point; 1 for an image without bitmap.
  CGFloat scaleOf() { return scale > 0 ? scale : 1; }
  NSInteger orientationOf() { return static_cast<NSInteger>(orientation); }
  CGImageRef bitmapOf() { return bitmap; }

  /// Why an image from a file has missing rows; nil if none are missing.
  NSString* problem();

  void drawInRect(CGRect rect);
  void drawAtPoint(CGPoint point);
  void drawBlended(CGRect rect, std::int32_t mode, CGFloat alpha);

  UIEdgeInsets capInsetsOf() { return capInsets; }
  UIEdgeInsets alignmentOf() { return alignment; }
  NSInteger renderingModeOf() { return renderingMode; }
  /// Copies that differ in one property.
  UIImage* withCapInsets(UIEdgeInsets insets);
  UIImage* withAlignment(UIEdgeInsets insets);
  UIImage* withRenderingMode(NSInteger mode);
  /// Whether a copy was made with cap insets, even if they are zero.
  bool isResizable() { return resizable; }
  Image* copyOf();

  Strong<::CGImage> bitmap;
  CGFloat scale;
  Orientation orientation;
  UIEdgeInsets capInsets;
  UIEdgeInsets alignment;
  NSInteger renderingMode;
  bool resizable;
};

}  // namespace host
