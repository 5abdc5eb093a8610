#include "hooks/track_observer.h"

#include "hooks/now_playing.h"
#include "objc/strong.h"
#include "platform/Dispatch.h"

namespace varnix {

// The method is added after the surfaces' initialisers are replaced, and not at all if the class
// has another of its name.
void observeTrack(NSObject* surface) {
  if (surface != nullptr && !objc::answers(surface, dyeTrackChanged<NSObject>)) return;
  send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::addObserver, surface,
       dyeTrackChanged<NSObject>, trackChanged(), nullptr);
}

void stopObservingTrack(NSObject* surface) {
  send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::removeObserver, surface);
}

// The block owns nothing. Otherwise it would be copied for the queue, and this thread's copy might
// be the last to release the surface.
void performOnMainQueue(NSObject* surface, SEL message) {
  NSObject* kept = Strong<NSObject>::retain(surface).leak();
  auto tint = objc::makeBlock<void()>([kept, message] {
    const auto owned = Strong<NSObject>::adopt(kept);
    objc::perform<void>(owned.get(), message);
  });
  dispatch_async(dispatch_get_main_queue(), tint);
}

}  // namespace varnix
