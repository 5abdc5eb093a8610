// The colour of an application's icon.
#pragma once

#include "prefs/VNXManager.h"

namespace varnix::Color {

/// The important colour of the icon of the application with that identifier, computed once and kept
/// in the manager's store, in memory and on disk. What is kept there is returned as it is, whatever
/// its class; an entry that is no archive of this process's classes counts as none. The fallback is
/// the answer for a nil identifier and an application without icon; nil for an image without
/// colour. Without a manager nothing is kept. No mark is set.
UIColor* IconColor(NSString* identifier, UIColor* fallback, VNXManager* manager);

}  // namespace varnix::Color
