// The action of share buttons.
#pragma once

#include "panesupport/QKBarButtonItem.h"

struct QKTwitterShareHandler : objc::View<QKTwitterShareHandler, NSObject> {
  /// The process's one handler, for any thread. Lives as long as the process.
  static constexpr ClassMessage<"sharedInstance", QKTwitterShareHandler*()> sharedInstance{};
  /// Presents a compose sheet with the button's text from the button's container.
  static constexpr Message<"shareTapped:", void(QKBarButtonItem*)> shareTapped{};
};
OBJC_OWN_EXPORTED_CLASS(QKTwitterShareHandler);
