#include "panesupport/QKTwitterShareHandler.h"

#include "objc/implementation.h"
#include "objc/synchronized.h"
#include "panesupport/frameworks.h"
#include "platform/Social.h"

namespace varnix {

namespace {

struct ShareHandler : NSObject {
  static QKTwitterShareHandler* sharedInstance() {
    static constinit QKTwitterShareHandler* shared = nullptr;
    const objc::Synchronized lock(objc::classOf<QKTwitterShareHandler>());
    if (shared == nullptr) shared = objc::make<QKTwitterShareHandler>().leak();
    return shared;
  }

  void shareTapped(QKBarButtonItem* item) {
    loadSocial();
    auto* sheet =
        SLComposeViewController::composeViewControllerForServiceType(SLServiceTypeTwitter());
    // Presenting nothing would raise.
    if (sheet == nullptr) return;
    send(sheet, SLComposeViewController::setInitialText, send(item, QKBarButtonItem::shareText));
    send(send(item, QKBarButtonItem::container), UIViewController::presentViewController, sheet,
         true, nullptr);
  }
};

}  // namespace
}  // namespace varnix

OBJC_CLASS_NAMED(
    QKTwitterShareHandler, NSObject, varnix::ShareHandler, NSObject,
    objc::Implements<QKTwitterShareHandler::sharedInstance, &varnix::ShareHandler::sharedInstance>,
    objc::Implements<QKTwitterShareHandler::shareTapped, &varnix::ShareHandler::shareTapped>)
