// The installed applications.
#pragma once

#include "platform/AppList.h"

namespace varnix::pane {

struct Applications {
  NSArray* identifiers = nullptr;  ///< sorted by name
  NSDictionary* names = nullptr;   ///< by identifier
};

/// Both nil on a device without the list.
Applications installedApplications();

/// Whether what the user has set for it counts: it is kept out, or has values of its own.
bool hasOwnSettings(NSString* application);

/// Its small icon if that is there at once, else nil.
UIImage* iconAtHand(NSString* application);
/// Has the list fetch the icons, one after the other on another thread. The message is sent to the
/// target on the main thread after each; the target is kept alive until then.
void fetchIcons(NSArray* applications, NSObject* target, SEL message);

/// Its icon's colour as the library computed it; nil if it has not.
UIColor* iconColor(NSString* application);
/// Makes the library compute it anew the next time.
void forgetIconColor(NSString* application);

}  // namespace varnix::pane
