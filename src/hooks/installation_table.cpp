#include "hooks/installation_table.h"

#include <cstring>

#include "hooks/UIKeyboard.h"
#include "hooks/UIStatusBarNewUIStyleAttributes.h"
#include "hooks/UISwitch.h"
#include "hooks/UIView.h"
#include "platform/CoreFoundation.h"

namespace varnix {

using objc::installHook;
using objc::MethodKind;
using objc::Replacement;

namespace {

constexpr Replacement kInterface[] = {
    {"UIStatusBarNewUIStyleAttributes", "initWithRequest:backgroundColor:foregroundColor:",
     MethodKind::instance, installHook<status_bar::init, status_bar::dyedInit>},
    {"UIView", "tintColor", MethodKind::instance,
     installHook<view::tintColor, view::dyedTintColor>},
    {"UIView", "setTintColor:", MethodKind::instance,
     installHook<view::setTintColor, view::dyedSetTintColor>},
    {"UISwitch", "layoutSubviews", MethodKind::instance,
     installHook<switches::layoutSubviews, switches::dyedLayoutSubviews>},
    {"UISwitch", "setOnTintColor:", MethodKind::instance,
     installHook<switches::setOnTintColor, switches::dyedSetOnTintColor>},
    {"UISwitch", "setTintColor:", MethodKind::instance,
     installHook<switches::setTintColor, switches::dyedSetTintColor>},
    {"UIKeyboard", "initWithFrame:", MethodKind::instance,
     installHook<keyboard::initWithFrame, keyboard::dyedInitWithFrame>},
    {"UIKBRenderConfig", "lightKeyboard", MethodKind::instance,
     installHook<keyboard::lightKeyboard, keyboard::dyedLightKeyboard>},
};

constexpr std::int32_t kErrorLevel = 3;

void reportMissing(const char* className, int line) {
  NSString* message = NSString::stringWithFormat("logos: nil class %s"_ns, className);
  CFLog(kErrorLevel, "[%s: %s:%d] %s: %@"_ns, "Varnix2", "Tweak", line, "ERROR", message);
}

Class target(const Replacement& row) {
  return row.kind == MethodKind::classMethod ? objc_getMetaClass(row.className)
                                             : objc_getClass(row.className);
}

}  // namespace

constinit const Group kInterfaceGroup{910, kInterface};

void install(const Group& group) {
  const Replacement* previous = nullptr;
  Class cls = nullptr;
  for (const Replacement& row : group.rows) {
    if (previous == nullptr || previous->kind != row.kind ||
        std::strcmp(previous->className, row.className) != 0) {
      cls = target(row);
    }
    previous = &row;
    if (cls == nullptr) {
      reportMissing(row.className, group.logLine);
    } else {
      row.install(cls, sel_registerName(row.selector));
    }
  }
}

}  // namespace varnix
