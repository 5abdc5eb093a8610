#include "probe/surfaces.h"

#include <array>
#include <cmath>
#include <cstdint>

#include "drawing/hex.h"
#include "objc/autorelease_pool.h"
#include "platform/UIKit.h"

namespace varnix::probe {

namespace {

constexpr char kText[] = "colour of text";
/// Stands for the getter if the part itself is the answer.
constexpr char kItself[] = "";

NSArray* shades(NSObject* balloon) { return send<NSArray*>(balloon, "colors"_sel); }

NSObject* shadeAt(NSArray* all, NSUInteger index) {
  return send(all, NSArray::objectAtIndex, index);
}

NSObject* firstShade(NSObject* balloon) {
  NSArray* all = shades(balloon);
  return send(all, NSArray::count) == 0 ? nullptr : shadeAt(all, 0);
}

NSObject* lastShade(NSObject* balloon) {
  NSArray* all = shades(balloon);
  const NSUInteger count = send(all, NSArray::count);
  return count == 0 ? nullptr : shadeAt(all, count - 1);
}

constexpr Surface kSurfaces[] = {
    {kStatusBar, "foregroundColor", "status bar", Form::color},
    {kView, "tintColor", "view", Form::color},
    {kTintedView, "_interactionTintColor", "set to red", Form::color},
    {kLabel, "tintColor", "label", Form::color},
    {kButton, "tintColor", "button", Form::color},
    {kNavigationBar, "tintColor", "navigation bar", Form::color},
    {kTabBar, "tintColor", "tab bar", Form::color},
    {kSegmentedControl, "tintColor", "segmented control", Form::color},
    {kTintedSegmentedControl, "tintColor", "segmented control, set to blue", Form::color},
    {kTintedSegmentedControl, "_interactionTintColor", "segmented control, set to blue",
     Form::color},
    {kSegment, "tintColor", "segmented control", Form::color},
    {kTintedSegment, "tintColor", "segmented control, set to blue", Form::color},
    {kTintedSegment, "_interactionTintColor", "segmented control, set to blue", Form::color},
    {kTintedSwitch, "onTintColor", "after layout, set to red", Form::color},
    {kTintedSwitch, "tintColor", "after layout, set to red", Form::color},
    {kKeyboard, "backgroundColor", "keyboard", Form::color},
    {kKeyboard, "opaque", "keyboard", Form::boolean, nullptr, "isOpaque"},
    {kKeyRendering, "lightKeyboard", "keyboard", Form::boolean},
    {kLink, "linkColor", "link", Form::color},
    {kTintedLink, "linkColor", "set to red", Form::color},
    {kBalloon, "colors", "balloon, first colour", Form::color, firstShade, kItself},
    {kBalloon, "colors", "balloon, last colour", Form::color, lastShade, kItself},
    {kTextColors, "twitterColorTextLink", kText, Form::classColor},
    {kTextColors, "twitterColorTextUsername", kText, Form::classColor},
    {kTextColors, "twitterColorTextTimestamp", kText, Form::classColor},
    {kTextColors, "twitterColorTextSocial", kText, Form::classColor},
    {kTextColors, "twitterColorTextLinkSubtle", kText, Form::classColor},
    {kTextColors, "twitterColorActivityTitle", kText, Form::classColor},
    {kTextColors, "twitterColorChangeTrendsLocationText", kText, Form::classColor},
    {kControlCenter, "colorTint", "presented", Form::color, backdropSettings},
    {kNotificationCenter, "colorTint", "presented", Form::color, backdropSettings},
    {kFolder, "wallpaperColor", "set to grey", Form::plainColor},
    {kIcon, "wallpaperColor", "set to grey", Form::plainColor},
    {kIcon, "fallbackColor", "set to grey", Form::plainColor},
    {kBadge, "_checkoutBackgroundImage", "badge", Form::color, nullptr, "_coveredColor"},
    {kVolume, "colorTint", "after layout", Form::color, backdropSettings},
};

std::uint8_t byteOf(CGFloat component) {
  return static_cast<std::uint8_t>(std::lround(std::fmin(std::fmax(component, 0), 1) * 255));
}

}  // namespace

std::span<const Surface> all() { return kSurfaces; }

bool exists(const Surface& surface) {
  Class cls = objc_getClass(surface.className());
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
  SEL getter = sel_registerName(surface.getter == nullptr ? surface.property : surface.getter);
  if (surface.form == Form::classColor)
    return colorAnswer(objc::sendDynamic<NSObject*>(objc_getClass(surface.className()), getter));
  const auto object = staged(surface.staged);
  NSObject* part = surface.part == nullptr ? object.get() : surface.part(object);
  if (part == nullptr) return {};
  if (surface.getter == kItself) return colorAnswer(part);
  if (surface.form == Form::boolean) return objc::sendDynamic<bool>(part, getter);
  if (surface.form == Form::plainColor)
    return plainColorAnswer(objc::sendDynamic<CGColorRef>(part, getter));
  return colorAnswer(objc::sendDynamic<NSObject*>(part, getter));
}

std::vector<Answer> shadeAnswers(NSObject* balloon) {
  NSArray* all = shades(balloon);
  std::vector<Answer> answers;
  for (NSUInteger i = 0; i < send(all, NSArray::count); ++i)
    answers.push_back(colorAnswer(shadeAt(all, i)));
  return answers;
}

}  // namespace varnix::probe
