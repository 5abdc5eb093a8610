#include "hooks/UIStatusBarNewUIStyleAttributes.h"

#include "hooks/shared_manager.h"

namespace varnix::status_bar {

constinit objc::Hook<Attributes::initWithRequest> init;

Attributes* dyedInit(Attributes* self, SEL cmd, NSObject* request, UIColor* background,
                     UIColor* foreground) {
  if (send(sharedManager, VNXManager::enabled<"statusBar">) != kKeepsItsLook && !inSpringBoard()) {
    foreground = send(sharedManager, VNXManager::dyeOf<"statusBar">);
  }
  return init.original(self, cmd, request, background, foreground);
}

}  // namespace varnix::status_bar
