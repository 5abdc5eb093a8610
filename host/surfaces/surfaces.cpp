#include "surfaces/surfaces.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "objc/autorelease_pool.h"
#include "platform/UIKit.h"
#include "surfaces/situations.h"

namespace host::surfaces {

namespace {

constexpr Surface kSurfaces[] = {
    {"UIStatusBarNewUIStyleAttributes", "foregroundColor", "status bar", Form::color,
     statusBarAttributes},
    {"UIView", "tintColor", "view", Form::color, plainView},
    {"UIView", "_interactionTintColor", "set to red", Form::color, redView},
    {"UILabel", "tintColor", "label", Form::color, plainView},
    {"UIButton", "tintColor", "button", Form::color, plainView},
    {"UINavigationBar", "tintColor", "navigation bar", Form::color, plainView},
    {"UITabBar", "tintColor", "tab bar", Form::color, plainView},
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
    {"UIKeyboard", "backgroundColor", "keyboard", Form::color, plainView},
    {"UIKeyboard", "opaque", "keyboard", Form::boolean, plainView, "isOpaque"},
    {"UIKBRenderConfig", "lightKeyboard", "keyboard", Form::boolean, plainObject},
};

int byteOf(CGFloat component) {
  return static_cast<int>(std::lround(std::fmin(std::fmax(component, 0), 1) * 255));
}

}  // namespace

std::span<const Surface> all() { return kSurfaces; }

bool exists(const Surface& surface) { return objc_getClass(surface.className) != nullptr; }

Answer colorAnswer(NSObject* color) {
  // By what it answers, not by its class: that may be hidden.
  SEL components = sel_registerName("getRed:green:blue:alpha:");
  std::array<CGFloat, 4> c{};
  if (color == nullptr || !color->respondsToSelector(components) ||
      !objc::sendDynamic<bool>(color, components, &c[0], &c[1], &c[2], &c[3])) {
    return {};
  }
  char text[10];
  std::snprintf(text, sizeof text, "#%02x%02x%02x%02x", byteOf(c[0]), byteOf(c[1]), byteOf(c[2]),
                byteOf(c[3]));
  return std::string(text);
}

Answer ask(const Surface& surface) {
  objc::AutoreleasePool pool;
  auto object = surface.make(objc_getClass(surface.className));
  SEL getter = sel_registerName(surface.getter == nullptr ? surface.property : surface.getter);
  if (surface.form == Form::boolean) {
    if (object.get() == nullptr) return {};
    return objc::sendDynamic<bool>(object, getter);
  }
  return colorAnswer(objc::sendDynamic<NSObject*>(object, getter));
}

}  // namespace host::surfaces
