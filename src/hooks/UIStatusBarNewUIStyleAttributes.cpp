#include "hooks/UIStatusBarNewUIStyleAttributes.h"

#include "hooks/shared_manager.h"

namespace varnix::status_bar {

constinit objc::Hook<Attributes*(Attributes*, NSObject*, UIColor*, UIColor*)> init;

Attributes* dyedInit(Attributes* self, SEL cmd, NSObject* request, UIColor* background,
                     UIColor* foreground) {
  if (send<NSInteger>(sharedManager, "statusBarEnabled"_sel) != kKeepsItsLook && !inSpringBoard()) {
    foreground = send<UIColor*>(sharedManager, "statusBarDye"_sel);
  }
  return init.original(self, cmd, request, background, foreground);
}

}  // namespace varnix::status_bar
