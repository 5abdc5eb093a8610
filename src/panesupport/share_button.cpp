// Puts a share button into a settings pane's navigation bar.
#include "objc/strong.h"
#include "panesupport/QKTwitterShareHandler.h"
#include "varnix/pane.h"

namespace {

/// An empty background, so that the button shows no border.
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
  auto item = Strong<QKBarButtonItem>::adopt(static_cast<QKBarButtonItem*>(
      send(raw, UIBarButtonItem::initWithImage, image, UIBarButtonItemStylePlain,
           QKTwitterShareHandler::sharedInstance(), QKTwitterShareHandler::shareTapped)));
  send(item, UIBarButtonItem::setBackgroundImage, emptyImage(), UIControlStateNormal,
       UIBarMetricsDefault);
  send(item, QKBarButtonItem::setContainer, controller);
  send(item, QKBarButtonItem::setShareText, text);
  send(send(controller, UIViewController::navigationItem), UINavigationItem::setRightBarButtonItem,
       item);
}
