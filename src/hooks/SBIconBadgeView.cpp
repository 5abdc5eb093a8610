#include "hooks/SBIconBadgeView.h"

#include "color/RecolorImage.h"
#include "hooks/shared_manager.h"
#include "objc/strong.h"

namespace varnix::badge {

constinit objc::Hook<NSObject*(Class)> checkoutBackgroundImage;

// Badges have no colour type: they carry the dye.
NSObject* dyedCheckoutBackgroundImage(Class self, SEL cmd) {
  auto* background = static_cast<UIImage*>(checkoutBackgroundImage.original(self, cmd));
  Class imageClass = objc::classOf<SBIconAccessoryImage>();
  UIImage* recolored = Color::RecolorImage(background, dye());
  auto* image = send<SBIconAccessoryImage*>(imageClass, "alloc"_sel);
  return Strong<SBIconAccessoryImage>::adopt(
             send<SBIconAccessoryImage*>(image, "initWithImage:"_sel, recolored))
      .autorelease();
}

}  // namespace varnix::badge
