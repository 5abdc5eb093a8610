#include "hooks/now_playing.h"

#include "hooks/shared_manager.h"
#include "objc/answers.h"
#include "objc/implementation.h"
#include "platform/dlfcn.h"

/// The controller notifies it of each change, on the controller's own thread.
struct VarnixNowPlayingDelegate : objc::View<VarnixNowPlayingDelegate, NSObject> {
  static constexpr Message<"nowPlayingController:nowPlayingInfoDidChange:",
                           void(NSObject* controller, NSObject* info)>
      infoDidChange{};
};
OBJC_OWN_CLASS(VarnixNowPlayingDelegate);

namespace varnix {

namespace {

constinit MPUNowPlayingController* controller = nullptr;
constinit VarnixNowPlayingDelegate* trackDelegate = nullptr;

struct NowPlayingDelegate : NSObject {
  void infoDidChange(NSObject*, NSObject*) {
    if (!inSpringBoard() || !send(sharedManager, VNXManager::useAlbumArt)) return;
    send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::postNotificationName,
         trackChanged(), nullptr);
  }
};

}  // namespace

void startNowPlaying() {
  dlopen("/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI", RTLD_NOW);
  auto made = objc::make<MPUNowPlayingController>();
  if (!objc::answers(made, MPUNowPlayingController::setDelegate,
                     MPUNowPlayingController::startUpdating, MPUNowPlayingController::isPlaying,
                     MPUNowPlayingController::currentNowPlayingArtwork)) {
    return;
  }
  controller = made.leak();
  trackDelegate = objc::make<VarnixNowPlayingDelegate>().leak();
  send(controller, MPUNowPlayingController::setDelegate, trackDelegate);
  send(controller, MPUNowPlayingController::startUpdating);
}

NSString* trackChanged() { return "com.quillmarsh.varnix2.track.changed"_ns; }

MPUNowPlayingController* nowPlayingController() { return controller; }

// The answer is a byte. Only its lowest bit counts.
bool isPlaying() { return (send(controller, MPUNowPlayingController::isPlaying) & 1) != 0; }

}  // namespace varnix

OBJC_PRIVATE_CLASS_NAMED(VarnixNowPlayingDelegate, NSObject, varnix::NowPlayingDelegate, NSObject,
                         objc::Implements<VarnixNowPlayingDelegate::infoDidChange,
                                          &varnix::NowPlayingDelegate::infoDidChange>)
