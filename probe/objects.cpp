#include "probe/objects.h"

#include <string_view>

namespace varnix::probe {

namespace {

/// A bar, a button or a line of text, as wide as the screen.
constexpr CGRect kUsual{{0, 0}, {375, 44}};

struct Place {
  const char* className;
  CGRect frame;
};
constexpr Place kPlaces[] = {
    {"SBControlCenterContentContainerView", {{0, 0}, {375, 440}}},
    {"SBHUDView", {{0, 0}, {155, 155}}},
    {"SBFolderIconBackgroundView", {{0, 0}, {60, 60}}},
    {"SBIconBlurryBackgroundView", {{0, 0}, {60, 60}}},
    {"UIKeyboard", {{0, 0}, {375, 216}}},
};

CGRect frameOf(Class cls) {
  for (const Place& place : kPlaces) {
    if (std::string_view(class_getName(cls)) == place.className) return place.frame;
  }
  return kUsual;
}

}  // namespace

Strong<NSObject> make(Class cls) {
  auto* made = send<NSObject*>(cls, "alloc"_sel);
  auto answers = [made](const char* selector) {
    return send(made, NSObject::respondsToSelector, sel_registerName(selector));
  };
  if (answers("initWithFrame:")) {
    made = send<NSObject*>(made, "initWithFrame:"_sel, frameOf(cls));
  } else if (answers("initWithNibName:bundle:")) {
    made = send<NSObject*>(made, "initWithNibName:bundle:"_sel, static_cast<NSString*>(nullptr),
                           static_cast<NSObject*>(nullptr));
  } else {
    made = send<NSObject*>(made, "init"_sel);
  }
  return Strong<NSObject>::adopt(made);
}

Strong<NSObject> make(const char* className) { return make(objc_getClass(className)); }

}  // namespace varnix::probe
