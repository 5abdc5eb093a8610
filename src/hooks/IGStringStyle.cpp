#include "hooks/IGStringStyle.h"

#include "hooks/shared_manager.h"

namespace varnix::instagram {

constinit objc::Hook<UIColor*(IGStringStyle*)> linkColor;
constinit objc::Hook<void(IGStringStyle*, UIColor*)> setLinkColor;

UIColor* dyedLinkColor(IGStringStyle*, SEL) { return dye(); }

void dyedSetLinkColor(IGStringStyle* self, SEL cmd, UIColor*) {
  setLinkColor.original(self, cmd, dye());
}

}  // namespace varnix::instagram
