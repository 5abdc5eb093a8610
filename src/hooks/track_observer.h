// Surfaces that are tinted again when the playing track changes.
#pragma once

#include "objc/hook.h"
#include "platform/Foundation.h"

namespace varnix {

/// The message that a change of the track is, to a surface of class T.
template <class T>
inline constexpr objc::Message<T, "dyeTrackChanged:", void(NSObject*)> dyeTrackChanged{};

/// From a surface's creation to the start of its end.
void observeTrack(NSObject* surface);
void stopObservingTrack(NSObject* surface);

/// Sends the message to the surface on the main queue, without waiting for it. The surface lives
/// until then, and is let go there: views end on the main thread.
void performOnMainQueue(NSObject* surface, SEL message);

/// What the notification calls.
template <class T, auto Tint>
void trackDidChange(T* self, SEL, NSObject*) {
  performOnMainQueue(self, Tint);
}

}  // namespace varnix
