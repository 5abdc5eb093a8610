// In applications, the status bar's foreground has the status bar's colour.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::status_bar {

using Attributes = UIStatusBarNewUIStyleAttributes;

extern objc::Hook<Attributes::initWithRequest> init;
Attributes* dyedInit(Attributes* self, SEL cmd, NSObject* request, UIColor* background,
                     UIColor* foreground);

}  // namespace varnix::status_bar
