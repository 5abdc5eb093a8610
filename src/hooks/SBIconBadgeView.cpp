#include "hooks/SBIconBadgeView.h"

#include "color/RecolorImage.h"
#include "hooks/shared_manager.h"
#include "objc/strong.h"

namespace varnix::badge {

constinit objc::Hook<SBIconBadgeView::checkoutBackgroundImage> checkoutBackgroundImage;

// Badges have no colour type: they always have the dye.
SBIconAccessoryImage* dyedCheckoutBackgroundImage(Class self, SEL cmd) {
  SBIconAccessoryImage* background = checkoutBackgroundImage.original(self, cmd);
  UIImage* recolored = Color::RecolorImage(background, dye());
  auto image = Strong<SBIconAccessoryImage>::adopt(
      send(objc::alloc<SBIconAccessoryImage>(), SBIconAccessoryImage::initWithImage, recolored));
  // The pool of backgrounds takes it back by this key.
  if (objc::answers(background, SBIconAccessoryImage::countedMapKey)) {
    send(image, SBIconAccessoryImage::setCountedMapKey,
         send(background, SBIconAccessoryImage::countedMapKey));
  }
  return image.autorelease();
}

}  // namespace varnix::badge
