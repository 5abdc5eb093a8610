#include "hooks/track_observer.h"

#include "hooks/now_playing.h"
#include "objc/strong.h"
#include "platform/Dispatch.h"

namespace varnix {

void observeTrack(NSObject* surface) {
  NSNotificationCenter::defaultCenter()->addObserver(
      surface, objc::Selector<"dyeTrackChanged:">::get(), trackChanged(), nullptr);
}

void stopObservingTrack(NSObject* surface) {
  NSNotificationCenter::defaultCenter()->removeObserver(surface);
}

void dyeTrackChanged(NSObject* self, SEL, NSObject*) {
  auto tint = objc::makeBlock<void()>([surface = Strong<NSObject>::retain(self)] {
    send<void>(surface.get(), "colorBackdrop"_sel);
  });
  dispatch_async(dispatch_get_main_queue(), tint);
}

}  // namespace varnix
