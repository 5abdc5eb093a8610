// The Darwin notify centre: notifications by name between all processes of one container root.
#pragma once

#include <string_view>

#include "export.h"

namespace host {

/// Posts to every observer in every process, this one included. The posting process needs no
/// observer, no run loop and no objects. A suspended process also hears it at once, unless it is
/// posted to wait: then each observer there gets it as it asked.
HOST_EXPORT void postDarwinNotification(std::string_view name, bool immediately = true);

/// Suspends the observers of this process, as the platform does with an application that is not in
/// front, or resumes them: what was kept for them arrives when the main loop runs.
HOST_EXPORT void suspendDarwinNotifications(bool suspended);

}  // namespace host
