// The user's choices for the interface under Accessibility.
#pragma once

#include "export.h"

namespace host {

/// Less transparent backgrounds. Sends no notification: the platform tells its views itself.
HOST_EXPORT void setEnhancedBackgroundContrast(bool enhanced);

}  // namespace host
