#include "hooks/CKGradientView.h"

#include "color/Darken.h"
#include "hooks/shared_manager.h"

namespace varnix::balloons {

constinit objc::Hook<NSArray*(CKGradientView*)> colors;

namespace {

NSInteger type() { return send<NSInteger>(sharedManager, "smsEnabled"_sel); }

UIColor* shade(float amount) {
  return Color::Darken(send<UIColor*>(sharedManager, "smsDye"_sel), amount);
}

}  // namespace

// Unlike other elements, balloons take to no type but these two.
NSArray* dyedColors(CKGradientView* self, SEL cmd) {
  NSArray* own = colors.original(self, cmd);
  if (type() != kOwnColor && type() != kFollowsTheDye) return own;
  NSObject* shades[] = {shade(15), shade(30)};
  return NSArray::arrayWithObjects(shades, 2);
}

}  // namespace varnix::balloons
