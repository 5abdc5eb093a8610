// What share buttons do.
#pragma once

#include "panesupport/QKBarButtonItem.h"

struct QKTwitterShareHandler : NSObject {
  /// The process's one handler, from any thread. Lives as long as the process.
  static QKTwitterShareHandler* sharedInstance();
  /// Presents a compose sheet with the button's text from the button's container.
  void shareTapped(QKBarButtonItem* item);
};
