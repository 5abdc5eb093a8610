#include "probe/surfaces.h"

#include <array>
#include <cmath>
#include <cstdint>

#include "drawing/hex.h"
#include "objc/autorelease_pool.h"
#include "platform/UIKit.h"
#include "probe/situations.h"
#include "probe/springboard_situations.h"

namespace varnix::probe {

namespace {

/// Stands for the getter if the object itself is the answer.
constexpr char kItself[] = "";
constexpr char kTwitter[] = "colour of text";

constexpr Surface kSurfaces[] = {
    {"UIStatusBarNewUIStyleAttributes", "foregroundColor", "status bar", Form::color,
     statusBarAttributes},
    {"UIView", "tintColor", "view", Form::color, make},
    {"UIView", "_interactionTintColor", "set to red", Form::color, redView},
    {"UILabel", "tintColor", "label", Form::color, make},
    {"UIButton", "tintColor", "button", Form::color, make},
    {"UINavigationBar", "tintColor", "navigation bar", Form::color, make},
    {"UITabBar", "tintColor", "tab bar", Form::color, make},
    {"UISegmentedControl", "tintColor", "segmented control", Form::color, segmented},
    {"UISegmentedControl", "tintColor", "segmented control, set to blue", Form::color,
     blueSegmented},
    {"UISegmentedControl", "_interactionTintColor", "segmented control, set to blue", Form::color,
     blueSegmented},
    {"UISegment", "tintColor", "segmented control", Form::color, segmented},
    {"UISegment", "tintColor", "segmented control, set to blue", Form::color, blueSegmented},
    {"UISegment", "_interactionTintColor", "segmented control, set to blue", Form::color,
     blueSegmented},
    {"UISwitch", "onTintColor", "after layout, set to red", Form::color, redSwitchAfterLayout},
    {"UISwitch", "tintColor", "after layout, set to red", Form::color, redSwitchAfterLayout},
    {"UIKeyboard", "backgroundColor", "keyboard", Form::color, make},
    {"UIKeyboard", "opaque", "keyboard", Form::boolean, make, "isOpaque"},
    {"UIKBRenderConfig", "lightKeyboard", "keyboard", Form::boolean, make},
    {"IGStringStyle", "linkColor", "link", Form::color, make},
    {"IGStringStyle", "linkColor", "set to red", Form::color, redLink},
    {"CKGradientView", "colors", "balloon, first colour", Form::color, firstShade, kItself},
    {"CKGradientView", "colors", "balloon, last colour", Form::color, lastShade, kItself},
    {"UIColor", "twitterColorTextLink", kTwitter, Form::classColor, nullptr},
    {"UIColor", "twitterColorTextUsername", kTwitter, Form::classColor, nullptr},
    {"UIColor", "twitterColorTextTimestamp", kTwitter, Form::classColor, nullptr},
    {"UIColor", "twitterColorTextSocial", kTwitter, Form::classColor, nullptr},
    {"UIColor", "twitterColorTextLinkSubtle", kTwitter, Form::classColor, nullptr},
    {"UIColor", "twitterColorActivityTitle", kTwitter, Form::classColor, nullptr},
    {"UIColor", "twitterColorChangeTrendsLocationText", kTwitter, Form::classColor, nullptr},
    {"SBControlCenterContentContainerView", "colorTint", "presented", Form::color,
     presentedControlCenter},
    {"SBNotificationCenterViewController", "colorTint", "presented", Form::color,
     presentedNotificationCenter},
    {"SBFolderIconBackgroundView", "wallpaperColor", "set to grey", Form::plainColor, greyBacking},
    {"SBIconBlurryBackgroundView", "wallpaperColor", "set to grey", Form::plainColor, greyBacking},
    {"SBIconBlurryBackgroundView", "fallbackColor", "set to grey", Form::plainColor, greyFallback},
    {"SBIconBadgeView", "_checkoutBackgroundImage", "badge", Form::color, badgeImage,
     "_coveredColor"},
    {"SBHUDView", "colorTint", "after layout", Form::color, laidOutHud},
};

std::uint8_t byteOf(CGFloat component) {
  return static_cast<std::uint8_t>(std::lround(std::fmin(std::fmax(component, 0), 1) * 255));
}

}  // namespace

std::span<const Surface> all() { return kSurfaces; }

bool exists(const Surface& surface) {
  Class cls = objc_getClass(surface.className);
  if (cls == nullptr) return false;
  return surface.form != Form::classColor ||
         class_getClassMethod(cls, sel_registerName(surface.property)) != nullptr;
}

Answer colorAnswer(NSObject* color) {
  // Decides by what it answers, not by its class, which may be hidden.
  SEL components = sel_registerName("getRed:green:blue:alpha:");
  std::array<CGFloat, 4> c{};
  if (color == nullptr || !send(color, NSObject::respondsToSelector, components) ||
      !objc::sendDynamic<bool>(color, components, &c[0], &c[1], &c[2], &c[3])) {
    return {};
  }
  return drawing::hex(byteOf(c[0]), byteOf(c[1]), byteOf(c[2]), byteOf(c[3]));
}

Answer plainColorAnswer(CGColorRef color) {
  if (color == nullptr) return {};
  return colorAnswer(send<NSObject*>(objc_getClass("UIColor"), "colorWithCGColor:"_sel, color));
}

Answer ask(const Surface& surface) {
  objc::AutoreleasePool pool;
  Class cls = objc_getClass(surface.className);
  SEL getter = sel_registerName(surface.getter == nullptr ? surface.property : surface.getter);
  if (surface.form == Form::classColor)
    return colorAnswer(objc::sendDynamic<NSObject*>(cls, getter));
  const auto object = surface.make(cls);
  if (object.get() == nullptr) return {};
  if (surface.getter == kItself) return colorAnswer(object);
  if (surface.form == Form::boolean) return objc::sendDynamic<bool>(object, getter);
  if (surface.form == Form::plainColor)
    return plainColorAnswer(objc::sendDynamic<CGColorRef>(object, getter));
  return colorAnswer(objc::sendDynamic<NSObject*>(object, getter));
}

}  // namespace varnix::probe
