// Alerts that ask before something happens.
#pragma once

#include "platform/UIKit.h"

namespace varnix::pane {

/// Shows an alert with a button that leaves everything as it is, and one with that title, which
/// sends the action with the argument to the target. Both are kept alive until then. The argument
/// may be nil.
void ask(NSString* title, NSString* message, NSString* confirm, NSObject* target, SEL action,
         NSObject* argument);

/// Shows an alert with a single button.
void tell(NSString* title, NSString* message);

}  // namespace varnix::pane
