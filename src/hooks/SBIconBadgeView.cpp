#include "hooks/SBIconBadgeView.h"

#include "color/RecolorImage.h"
#include "hooks/shared_manager.h"
#include "objc/strong.h"

namespace varnix::badge {

constinit objc::Hook<SBIconBadgeView::checkoutBackgroundImage> checkoutBackgroundImage;

namespace {

/// The pool of backgrounds takes an image back by its key, and ends the process for one without.
void copyKey(SBIconAccessoryImage* from, SBIconAccessoryImage* to) {
  if (objc::answers(from, SBIconAccessoryImage::countedMapKey)) {
    send(to, SBIconAccessoryImage::setCountedMapKey,
         send(from, SBIconAccessoryImage::countedMapKey));
  }
}

}  // namespace

// Badges have no colour type: they carry the dye.
SBIconAccessoryImage* dyedCheckoutBackgroundImage(Class self, SEL cmd) {
  SBIconAccessoryImage* background = checkoutBackgroundImage.original(self, cmd);
  UIImage* recolored = Color::RecolorImage(background, dye());
  auto image = Strong<SBIconAccessoryImage>::adopt(
      send(objc::alloc<SBIconAccessoryImage>(), SBIconAccessoryImage::initWithImage, recolored));
  copyKey(background, image);
  return image.autorelease();
}

}  // namespace varnix::badge
