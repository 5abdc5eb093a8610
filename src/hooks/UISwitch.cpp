#include "hooks/UISwitch.h"

#include "hooks/shared_manager.h"

namespace varnix::switches {

constinit objc::Hook<void(UISwitch*)> layoutSubviews;
constinit objc::Hook<void(UISwitch*, UIColor*)> setOnTintColor;
constinit objc::Hook<void(UISwitch*, UIColor*)> setTintColor;

// The two messages go through the replacements below.
void dyedLayoutSubviews(UISwitch* self, SEL cmd) {
  layoutSubviews.original(self, cmd);
  self->setTintColor(nullptr);
  self->setOnTintColor(dye());
}

void dyedSetOnTintColor(UISwitch* self, SEL cmd, UIColor*) {
  setOnTintColor.original(self, cmd, dye());
}

void dyedSetTintColor(UISwitch* self, SEL cmd, UIColor*) {
  setTintColor.original(self, cmd, nullptr);
}

}  // namespace varnix::switches
