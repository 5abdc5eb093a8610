// The playing track as SpringBoard sees it. The track belongs to the process, not to a controller.
// Each controller that updates tells its delegate about changes.
#include <algorithm>
#include <mutex>
#include <vector>

#include "objc/define.h"
#include "objc/strong.h"
#include "platform/MediaPlayerUI.h"
#include "runtime/send.h"

namespace {
struct NowPlaying : MPUNowPlayingController {
  void dealloc();
  void startUpdating();
  void stopUpdating();
  bool isPlaying();
  UIImage* artwork();

  /// Only in the stand-in: a track begins or ends. Delegates are told on the calling thread.
  static void setTrack(UIImage* artwork, bool plays);

  NSObject* delegate;  ///< not kept alive
};

struct Track {
  std::mutex mutex;
  Strong<UIImage> artwork;
  bool plays = false;
  std::vector<NowPlaying*> updating;  ///< not kept alive
};

Track& track() {
  static auto* playing = new Track;
  return *playing;
}

}  // namespace

OBJC_CLASS_NAMED(MPUNowPlayingController, NSObject, NowPlaying, NSObject,
                 objc::Property<"delegate", &NowPlaying::delegate, objc::Storage::assign>,
                 objc::ClassMethod<"_setArtwork:playing:", &NowPlaying::setTrack>,
                 objc::Method<"dealloc", &NowPlaying::dealloc>,
                 objc::Method<"startUpdating", &NowPlaying::startUpdating>,
                 objc::Method<"stopUpdating", &NowPlaying::stopUpdating>,
                 objc::Method<"isPlaying", &NowPlaying::isPlaying>,
                 objc::Method<"currentNowPlayingArtwork", &NowPlaying::artwork>)

void NowPlaying::dealloc() {
  stopUpdating();
  object_dispose(this);
}

void NowPlaying::startUpdating() {
  stopUpdating();
  std::scoped_lock guard(track().mutex);
  track().updating.push_back(this);
}

void NowPlaying::stopUpdating() {
  std::scoped_lock guard(track().mutex);
  std::erase(track().updating, this);
}

bool NowPlaying::isPlaying() {
  std::scoped_lock guard(track().mutex);
  return track().plays;
}

UIImage* NowPlaying::artwork() {
  std::scoped_lock guard(track().mutex);
  return static_cast<UIImage*>(objc_autorelease(objc_retain(track().artwork.get())));
}

void NowPlaying::setTrack(UIImage* artwork, bool plays) {
  std::vector<Strong<NowPlaying>> told;
  {
    std::scoped_lock guard(track().mutex);
    track().artwork = Strong<UIImage>::retain(artwork);
    track().plays = plays;
    for (NowPlaying* controller : track().updating)
      told.push_back(Strong<NowPlaying>::retain(controller));
  }
  for (const auto& controller : told) {
    send<void>(controller->delegate, "nowPlayingController:nowPlayingInfoDidChange:"_sel,
               static_cast<NSObject*>(controller.get()), static_cast<NSObject*>(nullptr));
  }
}
