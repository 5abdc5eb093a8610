// The Darwin notify centre: notifications by name between all processes of one container root.
#pragma once

#include <string_view>

#include "export.h"

namespace host {

/// Posts to every observer in every process, this one included. It needs no observer, no run loop
/// and no objects in the posting process. A process that is suspended hears it at once, too, unless
/// it is posted to wait: then as each observer there asked for.
HOST_EXPORT void postDarwinNotification(std::string_view name, bool immediately = true);

/// Suspends the observers of this process, as the platform does with an application that is not in
/// front, or has them go on: what was kept for them comes when the main loop turns.
HOST_EXPORT void suspendDarwinNotifications(bool suspended);

}  // namespace host
