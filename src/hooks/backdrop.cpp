#include "hooks/backdrop.h"

#include "color/ImportantColor.h"
#include "hooks/now_playing.h"
#include "prefs/IconColor.h"

namespace varnix {

namespace {

constexpr CGFloat kMaskAlpha = CGFloat(0.7);

using Settings = _UIBackdropViewSettings;

/// A view of another kind than usual there may have other settings, or none.
template <class Setter, class Value>
void setInput(UIView* view, Setter setter, Value value) {
  auto* backdrop = static_cast<_UIBackdropView*>(view);
  if (!objc::answers(backdrop, _UIBackdropView::inputSettings)) return;
  Settings* settings = send(backdrop, _UIBackdropView::inputSettings);
  if (objc::answers(settings, Settings::setRequiresColorStatistics, Settings::setUsesColorTintView,
                    Settings::setColorTint, Settings::setColorTintAlpha,
                    Settings::setColorTintMaskAlpha)) {
    send(settings, setter, value);
  }
}

bool albumArtIsLive() {
  return send(sharedManager, VNXManager::useAlbumArt) && inSpringBoard() &&
         objc::classOf<MPUNowPlayingController>() != nullptr && isPlaying();
}

/// Nil if nothing plays, for a track without artwork, and for artwork without colour.
UIColor* albumColor() {
  auto artwork = [] {
    return send(nowPlayingController(), MPUNowPlayingController::currentNowPlayingArtwork);
  };
  if (!isPlaying() || artwork() == nullptr) return nullptr;
  return Color::ImportantColor(artwork());
}

UIColor* iconColorInFront(const BackdropElement& element) {
  NSString* identifier = send(sharedManager, VNXManager::getOpenAppId);
  UIColor* fallback = element.color();
  if (identifier == nullptr) return fallback;
  return Color::IconColor(identifier, fallback, sharedManager);
}

UIColor* tintOf(const BackdropElement& element) {
  if (!albumArtIsLive()) {
    if (element.type() == kOwnColor) return element.color();
    if (send(sharedManager, VNXManager::wantsIconColor)) return iconColorInFront(element);
  }
  if (UIColor* album = albumColor()) return album;
  return element.color();
}

}  // namespace

void tintBackdrop(UIView* backdrop, const BackdropElement& element) {
  setInput(backdrop, Settings::setRequiresColorStatistics, true);
  setInput(backdrop, Settings::setUsesColorTintView, true);
  setInput(backdrop, Settings::setColorTint, tintOf(element));
  setInput(backdrop, Settings::setColorTintAlpha, element.tintAlpha);
  setInput(backdrop, Settings::setColorTintMaskAlpha, kMaskAlpha);
}

void tintOrClearBackdrop(UIView* backdrop, const BackdropElement& element) {
  if (element.type() != kKeepsItsLook) return tintBackdrop(backdrop, element);
  setInput(backdrop, Settings::setRequiresColorStatistics, false);
  setInput(backdrop, Settings::setUsesColorTintView, false);
  setInput(backdrop, Settings::setColorTint, nullptr);
}

}  // namespace varnix
