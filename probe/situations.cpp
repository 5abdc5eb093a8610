#include "probe/situations.h"

#include "runtime/instance_variable.h"

namespace varnix::probe {

namespace {

using Tone = Situation::Tone;
constexpr Tone kRed{1, 0, 0}, kBlue{0, 0, 1}, kBlack{0, 0, 0};
constexpr Tone kGrey{CGFloat(0.5), CGFloat(0.5), CGFloat(0.5)};

// What happens.

void layOut(NSObject* view, const Given&) { send<void>(view, "layoutSubviews"_sel); }

void tint(NSObject* view, const Given& given) {
  send<void>(view, "setTintColor:"_sel, given.color);
}

void tintSwitch(NSObject* view, const Given& given) {
  tint(view, given);
  send<void>(view, "setOnTintColor:"_sel, given.color);
  layOut(view, given);
}

void tintLink(NSObject* style, const Given& given) {
  send<void>(style, "setLinkColor:"_sel, given.color);
}

void presentControlCenter(NSObject* center, const Given&) {
  send<void>(center, "controlCenterWillPresent"_sel);
}

void presentNotificationCenter(NSObject* center, const Given&) {
  send<void>(center, "hostWillPresent"_sel);
}

void giveColor(NSObject* background, const Given& given) {
  const auto color = send<CGColorRef>(given.color, "CGColor"_sel);
  send<void>(background, "setWallpaperColor:phase:"_sel, color, given.phase);
}

void givePiece(NSObject* background, const Given& given) {
  giveColor(background, given);
  constexpr CGSize kIconSize{60, 60};
  const auto color = send<CGColorRef>(given.color, "CGColor"_sel);
  const auto picture = given.hasPicture ? make(objc_getClass("UIImage")) : nullptr;
  send<void>(background, "setWallpaperBackgroundRect:forContents:withFallbackColor:"_sel,
             CGRect{given.phase, kIconSize}, picture.get(), color);
}

// How objects are made that init does not make.

Strong<NSObject> attributes(Class cls, const Given& given) {
  NSObject* request = nullptr;
  UIColor* background = UIColor::colorWithRed(1, 1, 1, 1);
  return Strong<NSObject>::adopt(send<NSObject*>(
      send<NSObject*>(cls, "alloc"_sel), "initWithRequest:backgroundColor:foregroundColor:"_sel,
      request, background, given.color));
}

/// The control lives as long as the pool around the question; a segment does not keep it alive.
Strong<NSObject> inControl(Class cls, const Given&) {
  auto segment = make(cls);
  NSObject* control = make(objc_getClass("UISegmentedControl")).autorelease();
  send<void>(control, "addSubview:"_sel, segment.get());
  return segment;
}

Strong<NSObject> badgeImage(Class cls, const Given&) {
  return Strong<NSObject>::retain(send<NSObject*>(cls, "_checkoutBackgroundImage"_sel));
}

Given completed(const Situation& situation, Given given) {
  const auto [red, green, blue] = situation.color;
  if (given.color == nullptr) given.color = UIColor::colorWithRed(red, green, blue, 1);
  return given;
}

}  // namespace

constinit const Situation kView{"UIView"};
constinit const Situation kLabel{"UILabel"};
constinit const Situation kButton{"UIButton"};
constinit const Situation kNavigationBar{"UINavigationBar"};
constinit const Situation kTabBar{"UITabBar"};
constinit const Situation kSlider{"UISlider"};
constinit const Situation kSegmentedControl{"UISegmentedControl"};
constinit const Situation kSegment{"UISegment", nullptr, {}, inControl};
constinit const Situation kLaidOutSwitch{"UISwitch", layOut};
constinit const Situation kTintedView{"UIView", tint, kRed};
constinit const Situation kTintedSegmentedControl{"UISegmentedControl", tint, kBlue};
constinit const Situation kTintedSegment{"UISegment", tint, kBlue, inControl};
constinit const Situation kTintedSwitch{"UISwitch", tintSwitch, kRed};
constinit const Situation kStatusBar{"UIStatusBarNewUIStyleAttributes", nullptr, kBlack,
                                     attributes};
constinit const Situation kKeyboard{"UIKeyboard"};
constinit const Situation kKeyRendering{"UIKBRenderConfig"};
constinit const Situation kLink{"IGStringStyle"};
constinit const Situation kTintedLink{"IGStringStyle", tintLink, kRed};
constinit const Situation kBalloon{"CKGradientView"};
constinit const Situation kTextColors{"UIColor"};
constinit const Situation kControlCenter{"SBControlCenterContentContainerView",
                                         presentControlCenter};
constinit const Situation kNotificationCenter{"SBNotificationCenterViewController",
                                              presentNotificationCenter};
constinit const Situation kVolume{"SBHUDView", layOut};
constinit const Situation kFolder{"SBFolderIconBackgroundView", giveColor, kGrey};
constinit const Situation kIcon{"SBIconBlurryBackgroundView", givePiece, kGrey};
constinit const Situation kBadge{"SBIconBadgeView", nullptr, {}, badgeImage};

Strong<NSObject> make(Class cls) {
  return Strong<NSObject>::adopt(send<NSObject*>(send<NSObject*>(cls, "alloc"_sel), "init"_sel));
}

Strong<NSObject> make(const Situation& situation, const Given& given) {
  Class cls = objc_getClass(situation.className);
  if (cls == nullptr || situation.make == nullptr) return make(cls);
  return situation.make(cls, completed(situation, given));
}

void happen(const Situation& situation, NSObject* object, const Given& given) {
  if (object == nullptr || situation.happen == nullptr) return;
  situation.happen(object, completed(situation, given));
}

Strong<NSObject> staged(const Situation& situation, const Given& given) {
  auto object = make(situation, given);
  happen(situation, object, given);
  return object;
}

void playTrack(NSObject* artwork, bool plays) {
  send<void>(objc_getClass("MPUNowPlayingController"), "_setArtwork:playing:"_sel, artwork, plays);
}

NSObject* backdropSettings(NSObject* surface) {
  constexpr char kVariable[] = "_backdropView";
  if (surface == nullptr ||
      class_getInstanceVariable(object_getClass(surface), kVariable) == nullptr) {
    return nullptr;
  }
  auto* backdrop = objc::instanceVariable<NSObject>(surface, kVariable);
  return send<NSObject*>(backdrop, "inputSettings"_sel);
}

}  // namespace varnix::probe
