// Surfaces that are tinted again when the playing track changes.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

/// From a surface's creation to the start of its end.
void observeTrack(NSObject* surface);
void stopObservingTrack(NSObject* surface);

/// What the notification calls: the poster does not wait for the tint, which comes on the main
/// queue. The surface lives until then.
void dyeTrackChanged(NSObject* self, SEL cmd, NSObject* notification);

}  // namespace varnix
