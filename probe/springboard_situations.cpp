#include "probe/springboard_situations.h"

#include "platform/UIKit.h"
#include "probe/situations.h"
#include "runtime/instance_variable.h"

namespace varnix::probe {

namespace {

Strong<NSObject> settingsOf(const Strong<NSObject>& surface) {
  return Strong<NSObject>::retain(backdropSettings(surface));
}

}  // namespace

NSObject* backdropSettings(NSObject* surface) {
  constexpr char kVariable[] = "_backdropView";
  if (surface == nullptr ||
      class_getInstanceVariable(object_getClass(surface), kVariable) == nullptr) {
    return nullptr;
  }
  auto* backdrop = objc::instanceVariable<NSObject>(surface, kVariable);
  return send<NSObject*>(backdrop, "inputSettings"_sel);
}

CGColorRef wallpaperColor() {
  constexpr CGFloat kMiddle = CGFloat(0.5);
  return send<CGColorRef>(UIColor::colorWithRed(kMiddle, kMiddle, kMiddle, 1), "CGColor"_sel);
}

Strong<NSObject> presentedControlCenter(Class cls) {
  const auto center = make(cls);
  send<void>(center, "controlCenterWillPresent"_sel);
  return settingsOf(center);
}

Strong<NSObject> presentedNotificationCenter(Class cls) {
  const auto center = make(cls);
  send<void>(center, "hostWillPresent"_sel);
  return settingsOf(center);
}

Strong<NSObject> laidOutHud(Class cls) {
  const auto hud = make(cls);
  send<void>(hud, "layoutSubviews"_sel);
  return settingsOf(hud);
}

Strong<NSObject> greyBacking(Class cls) {
  auto view = make(cls);
  send<void>(view, "setWallpaperColor:phase:"_sel, wallpaperColor(), CGPoint{0, 0});
  return view;
}

Strong<NSObject> greyFallback(Class cls) {
  auto view = make(cls);
  constexpr CGRect kPiece{{0, 0}, {60, 60}};
  send<void>(view, "setWallpaperBackgroundRect:forContents:withFallbackColor:"_sel, kPiece,
             static_cast<NSObject*>(nullptr), wallpaperColor());
  return view;
}

Strong<NSObject> badgeImage(Class cls) {
  return Strong<NSObject>::retain(send<NSObject*>(cls, "_checkoutBackgroundImage"_sel));
}

}  // namespace varnix::probe
