#include "hooks/now_playing.h"

#include "hooks/shared_manager.h"
#include "objc/define.h"
#include "platform/dlfcn.h"

/// Told of each change by the controller, on whatever thread that has.
struct VarnixNowPlayingDelegate : NSObject {
  void infoDidChange(NSObject* controller, NSObject* info);
};

namespace varnix {

namespace {

constinit MPUNowPlayingController* controller = nullptr;
constinit VarnixNowPlayingDelegate* trackDelegate = nullptr;

template <class T>
T* make() {
  return send<T*>(objc::alloc<T>(), "init"_sel);
}

}  // namespace

void startNowPlaying() {
  dlopen("/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI", RTLD_NOW);
  if (objc::classOf<MPUNowPlayingController>() == nullptr) return;
  controller = make<MPUNowPlayingController>();
  if (controller == nullptr) return;
  trackDelegate = make<VarnixNowPlayingDelegate>();
  send<void>(controller, "setDelegate:"_sel, trackDelegate);
  send<void>(controller, "startUpdating"_sel);
}

NSString* trackChanged() { return "com.quillmarsh.varnix2.track.changed"_ns; }

MPUNowPlayingController* nowPlayingController() { return controller; }

// The answer is a byte of which the lowest bit counts.
bool isPlaying() { return (send<unsigned char>(controller, "isPlaying"_sel) & 1) != 0; }

}  // namespace varnix

void VarnixNowPlayingDelegate::infoDidChange(NSObject*, NSObject*) {
  using namespace varnix;
  if (!inSpringBoard() || !send<bool>(sharedManager, "useAlbumArt"_sel)) return;
  NSNotificationCenter::defaultCenter()->postNotificationName(trackChanged(), nullptr);
}

OBJC_CLASS(VarnixNowPlayingDelegate, NSObject,
           objc::Method<"nowPlayingController:nowPlayingInfoDidChange:",
                        &VarnixNowPlayingDelegate::infoDidChange>)
