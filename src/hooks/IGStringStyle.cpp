#include "hooks/IGStringStyle.h"

#include "hooks/shared_manager.h"

namespace varnix::instagram {

constinit objc::Hook<IGStringStyle::linkColor> linkColor;
constinit objc::Hook<IGStringStyle::setLinkColor> setLinkColor;

UIColor* dyedLinkColor(IGStringStyle*, SEL) { return dye(); }

void dyedSetLinkColor(IGStringStyle* self, SEL cmd, UIColor*) {
  setLinkColor.original(self, cmd, dye());
}

}  // namespace varnix::instagram
