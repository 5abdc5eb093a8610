// Tints surfaces again when the playing track changes.
#pragma once

#include "objc/hook.h"
#include "platform/Foundation.h"

namespace varnix {

/// The message that a surface of class T gets at a change of the track.
template <class T>
inline constexpr objc::Message<T, "dyeTrackChanged:", void(NSObject*)> dyeTrackChanged{};

/// Observe from a surface's creation until its deallocation begins.
void observeTrack(NSObject* surface);
void stopObservingTrack(NSObject* surface);

/// Sends the message to the surface later, on the main queue. The surface is kept alive until then
/// and released there, since views must be freed on the main thread.
void performOnMainQueue(NSObject* surface, SEL message);

/// The method that the notification calls.
template <class T, auto Tint>
void trackDidChange(T* self, SEL, NSObject*) {
  performOnMainQueue(self, Tint);
}

}  // namespace varnix
