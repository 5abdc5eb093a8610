#include "hooks/CKGradientView.h"

#include "color/Darken.h"
#include "hooks/shared_manager.h"

namespace varnix::balloons {

constinit objc::Hook<CKGradientView::colors> colors;

namespace {

NSInteger type() { return send(sharedManager, VNXManager::enabled<"sms">); }

UIColor* shade(float amount) {
  return Color::Darken(send(sharedManager, VNXManager::dyeOf<"sms">), amount);
}

}  // namespace

// Unlike other elements, balloons are dyed only for these two types.
NSArray* dyedColors(CKGradientView* self, SEL cmd) {
  NSArray* own = colors.original(self, cmd);
  if (type() != kOwnColor && type() != kFollowsTheDye) return own;
  NSObject* shades[] = {shade(15), shade(30)};
  // The settings may have changed between the questions.
  if (shades[0] == nullptr || shades[1] == nullptr) return own;
  return NSArray::arrayWithObjects(shades, 2);
}

}  // namespace varnix::balloons
