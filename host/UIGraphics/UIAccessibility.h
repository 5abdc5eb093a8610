// What the user asked of the interface under Accessibility.
#pragma once

#include "export.h"

namespace host {

/// Backgrounds that are less see-through. Nobody is told: the platform tells its views by itself.
HOST_EXPORT void setEnhancedBackgroundContrast(bool enhanced);

}  // namespace host
