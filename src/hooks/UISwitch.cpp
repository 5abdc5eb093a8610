#include "hooks/UISwitch.h"

#include "hooks/shared_manager.h"

namespace varnix::switches {

constinit objc::Hook<UIView::layoutSubviews, UISwitch> layoutSubviews;
constinit objc::Hook<UISwitch::setOnTintColor> setOnTintColor;
constinit objc::Hook<UIView::setTintColor, UISwitch> setTintColor;

// Both messages reach the replacements below.
void dyedLayoutSubviews(UISwitch* self, SEL cmd) {
  layoutSubviews.original(self, cmd);
  send(self, UIView::setTintColor, nullptr);
  send(self, UISwitch::setOnTintColor, dye());
}

void dyedSetOnTintColor(UISwitch* self, SEL cmd, UIColor*) {
  setOnTintColor.original(self, cmd, dye());
}

void dyedSetTintColor(UISwitch* self, SEL cmd, UIColor*) {
  setTintColor.original(self, cmd, nullptr);
}

}  // namespace varnix::switches
