// The Darwin notify centre: notifications by name between all processes of one container root.
#pragma once

#include <string_view>

#include "export.h"

namespace host {

/// Posts to every observer in every process, this one included. It needs no observer, no run loop
/// and no objects in the posting process.
HOST_EXPORT void postDarwinNotification(std::string_view name);

}  // namespace host
