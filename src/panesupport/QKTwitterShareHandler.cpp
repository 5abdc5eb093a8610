#include "panesupport/QKTwitterShareHandler.h"

#include "objc/define.h"
#include "objc/synchronized.h"
#include "panesupport/frameworks.h"
#include "platform/Social.h"

QKTwitterShareHandler* QKTwitterShareHandler::sharedInstance() {
  static constinit QKTwitterShareHandler* shared = nullptr;
  Class cls = objc::classOf<QKTwitterShareHandler>();
  const objc::Synchronized lock(cls);
  if (shared == nullptr)
    shared = send<QKTwitterShareHandler*>(objc::alloc<QKTwitterShareHandler>(), "init"_sel);
  return shared;
}

void QKTwitterShareHandler::shareTapped(QKBarButtonItem* item) {
  varnix::loadSocial();
  auto* sheet =
      SLComposeViewController::composeViewControllerForServiceType(SLServiceTypeTwitter());
  // Presenting nothing would raise.
  if (sheet == nullptr) return;
  sheet->setInitialText(send<NSString*>(item, "shareText"_sel));
  auto* container = send<UIViewController*>(item, "container"_sel);
  send<void>(container, "presentViewController:animated:completion:"_sel,
             static_cast<UIViewController*>(sheet), true, objc::Block<void()>{nullptr});
}

OBJC_EXPORTED_CLASS(QKTwitterShareHandler, NSObject,
                    objc::ClassMethod<"sharedInstance", &QKTwitterShareHandler::sharedInstance>,
                    objc::Method<"shareTapped:", &QKTwitterShareHandler::shareTapped>)
