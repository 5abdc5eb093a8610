// The library's only entry point: it runs once in every process that loads it.
#include "hooks/UIColor.h"
#include "hooks/installation_table.h"
#include "hooks/now_playing.h"
#include "hooks/shared_manager.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/ChatKit.h"

namespace varnix {

constinit VNXManager* sharedManager = nullptr;

namespace {

/// Whether this process is to be dyed at all.
bool passesGates() {
  if (!send(sharedManager, VNXManager::tweakEnabled)) return false;
  NSString* bundleId = send(sharedManager, VNXManager::bundleId);
  if (send(sharedManager, VNXManager::appIsDisabled, bundleId)) return false;
  return !send(bundleId, NSString::isEqualToString, "com.apple.WebKit.WebContent"_ns);
}

[[gnu::constructor]] void start() {
  objc::AutoreleasePool pool;
  install({0, kColorMarks});
  sharedManager = objc::make<VNXManager>().leak();
  if (!passesGates()) return;

  NSString* bundleId = send(sharedManager, VNXManager::bundleId);
  auto isBundle = [&](NSString* name) { return send(bundleId, NSString::isEqualToString, name); };
  install({0, kColorMeasures});
  if (objc::classOf<UIView>() != nullptr) install(kInterfaceGroup);
  if (isBundle("com.burbn.instagram"_ns)) install(kInstagramGroup);
  if (objc::classOf<CKColoredBalloonView>() != nullptr) install(kMessagesGroup);
  if (isBundle("com.atebits.Tweetie2"_ns)) install(kTwitterGroup);
  if (!isBundle("com.apple.springboard"_ns)) return;
  if (send(sharedManager, VNXManager::useAlbumArt)) startNowPlaying();
  install(kSpringBoardGroup);
}

}  // namespace
}  // namespace varnix
