// The end of the first page: who made this, and which version it is.
#pragma once

#include "platform/Preferences.h"

namespace varnix::pane {

/// Asks for the version once a process, since that waits for another program.
PSSpecifier* versionFooter();

}  // namespace varnix::pane
