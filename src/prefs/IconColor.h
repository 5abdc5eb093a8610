// The colour of an application's icon.
#pragma once

#include "prefs/VNXManager.h"

namespace varnix::Color {

/// The important colour of the icon of the application with that identifier, computed once and kept
/// in the manager's store, in memory and on disk. A kept entry is returned as it is, whatever its
/// class; one that is not an archive, or names classes this process lacks, counts as absent.
/// Returns the fallback for a nil identifier and for an application without icon, and nil for an
/// image without colour. Without a manager nothing is kept. No mark is set.
UIColor* IconColor(NSString* identifier, UIColor* fallback, VNXManager* manager);

}  // namespace varnix::Color
