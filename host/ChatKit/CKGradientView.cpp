// Balloons of Messages.
#include "UIKit/UIView.h"
#include "platform/ChatKit.h"

namespace {

struct GradientView : host::View {
  /// The platform's blue, from top to bottom.
  NSArray* colors() {
    auto byte = [](int value) { return static_cast<CGFloat>(value / 255.0); };
    NSObject* shades[] = {UIColor::colorWithRed(byte(0x5a), byte(0xc8), byte(0xfa), 1),
                          UIColor::colorWithRed(0, byte(0x7a), 1, 1)};
    return NSArray::arrayWithObjects(shades, 2);
  }
};

}  // namespace

OBJC_CLASS_NAMED(CKGradientView, UIView, GradientView, host::View,
                 objc::Method<"colors", &GradientView::colors>)
PLAIN_VIEW_CLASS(CKColoredBalloonView, UIView)
