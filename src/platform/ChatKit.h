// ChatKit, a private framework: the balloons of Messages.
#pragma once

#include "platform/UIKit.h"

struct CKColoredBalloonView : objc::View<CKColoredBalloonView, UIView> {};

struct CKGradientView : objc::View<CKGradientView, UIView> {
  /// From top to bottom.
  static constexpr Message<"colors", NSArray*()> colors{};
};
