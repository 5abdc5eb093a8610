// The library's one entry point: runs once in every process that loads it.
#include "hooks/UIColor.h"
#include "hooks/installation_table.h"
#include "hooks/now_playing.h"
#include "hooks/shared_manager.h"
#include "objc/autorelease_pool.h"
#include "platform/ChatKit.h"

namespace varnix {

constinit VNXManager* sharedManager = nullptr;

namespace {

/// Whether this process is to be dyed at all.
bool passesGates() {
  if (!send<bool>(sharedManager, "tweakEnabled"_sel)) return false;
  auto* bundleId = send<NSString*>(sharedManager, "bundleId"_sel);
  if (send<bool>(sharedManager, "appIsDisabled:"_sel, bundleId)) return false;
  return !send<bool>(bundleId, "isEqualToString:"_sel, "com.apple.WebKit.WebContent"_ns);
}

[[gnu::constructor]] void start() {
  objc::AutoreleasePool pool;
  addColorMarks(objc_getClass("UIColor"));
  sharedManager = send<VNXManager*>(objc::alloc<VNXManager>(), "init"_sel);
  if (!passesGates()) return;

  auto* bundleId = send<NSString*>(sharedManager, "bundleId"_sel);
  auto isBundle = [&](NSString* name) {
    return send<bool>(bundleId, "isEqualToString:"_sel, name);
  };
  if (objc::classOf<UIView>() != nullptr) install(kInterfaceGroup);
  if (isBundle("com.burbn.instagram"_ns)) install(kInstagramGroup);
  if (objc::classOf<CKColoredBalloonView>() != nullptr) install(kMessagesGroup);
  if (isBundle("com.atebits.Tweetie2"_ns)) install(kTwitterGroup);
  if (!isBundle("com.apple.springboard"_ns)) return;
  if (send<bool>(sharedManager, "useAlbumArt"_sel)) startNowPlaying();
  install(kSpringBoardGroup);
}

}  // namespace
}  // namespace varnix
