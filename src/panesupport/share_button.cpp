// Puts a share button into a settings pane's navigation bar.
#include "panesupport/QKTwitterShareHandler.h"
#include "varnix/pane.h"

namespace {

/// A background of nothing, so that the button shows no border.
UIImage* emptyImage() {
  constexpr CGSize kSize{20, 20};
  UIGraphicsBeginImageContextWithOptions(kSize, false, 0);
  UIImage* image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return image;
}

}  // namespace

void QKAddTwitterShareButton(UIViewController* controller, UIImage* image, NSString* text) {
  auto* raw = objc::alloc<QKBarButtonItem>();
  if (raw == nullptr) return;  // a process without buttons
  auto* handler =
      send<QKTwitterShareHandler*>(objc::classOf<QKTwitterShareHandler>(), "sharedInstance"_sel);
  auto item = Strong<QKBarButtonItem>::adopt(static_cast<QKBarButtonItem*>(
      raw->initWithImage(image, UIBarButtonItemStylePlain, handler, "shareTapped:"_sel)));
  item->setBackgroundImage(emptyImage(), UIControlStateNormal, UIBarMetricsDefault);
  item->setContainer(controller);
  item->setShareText(text);
  auto* navigationItem = send<UINavigationItem*>(controller, "navigationItem"_sel);
  send<void>(navigationItem, "setRightBarButtonItem:"_sel,
             static_cast<UIBarButtonItem*>(item.get()));
}
