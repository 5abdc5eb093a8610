#include "hooks/backdrop.h"

#include "color/ImportantColor.h"
#include "hooks/now_playing.h"
#include "prefs/IconColor.h"

namespace varnix {

namespace {

constexpr CGFloat kMaskAlpha = CGFloat(0.7);

template <class Value, objc::FixedString Name>
void setInput(UIView* backdrop, objc::Selector<Name> setter, Value value) {
  send<void>(send<NSObject*>(backdrop, "inputSettings"_sel), setter, value);
}

bool albumArtIsLive() {
  return send<bool>(sharedManager, "useAlbumArt"_sel) && inSpringBoard() &&
         objc::classOf<MPUNowPlayingController>() != nullptr && isPlaying();
}

/// Nil where nothing plays, and for a track without artwork or artwork without colour.
UIColor* albumColor() {
  auto artwork = [] {
    return send<UIImage*>(nowPlayingController(), "currentNowPlayingArtwork"_sel);
  };
  if (!isPlaying() || artwork() == nullptr) return nullptr;
  return Color::ImportantColor(artwork());
}

UIColor* iconColorInFront(const BackdropElement& element) {
  auto* identifier = send<NSString*>(sharedManager, "getOpenAppId"_sel);
  UIColor* fallback = element.color();
  if (identifier == nullptr) return fallback;
  return Color::IconColor(identifier, fallback, sharedManager);
}

UIColor* tintOf(const BackdropElement& element) {
  if (!albumArtIsLive()) {
    if (element.type() == kOwnColor) return element.color();
    if (send<bool>(sharedManager, "wantsIconColor"_sel)) return iconColorInFront(element);
  }
  if (UIColor* album = albumColor()) return album;
  return element.color();
}

}  // namespace

void tintBackdrop(UIView* backdrop, const BackdropElement& element) {
  setInput(backdrop, "setRequiresColorStatistics:"_sel, true);
  setInput(backdrop, "setUsesColorTintView:"_sel, true);
  setInput(backdrop, "setColorTint:"_sel, tintOf(element));
  setInput(backdrop, "setColorTintAlpha:"_sel, element.tintAlpha);
  setInput(backdrop, "setColorTintMaskAlpha:"_sel, kMaskAlpha);
}

void tintOrClearBackdrop(UIView* backdrop, const BackdropElement& element) {
  if (element.type() != kKeepsItsLook) return tintBackdrop(backdrop, element);
  setInput(backdrop, "setRequiresColorStatistics:"_sel, false);
  setInput(backdrop, "setUsesColorTintView:"_sel, false);
  setInput(backdrop, "setColorTint:"_sel, static_cast<UIColor*>(nullptr));
}

}  // namespace varnix
