// The Preferences framework: a settings pane's rows.
#pragma once

#include "platform/Foundation.h"

struct PSSpecifier : NSObject {
  NSMutableDictionary* properties() { return send<NSMutableDictionary*>(this, "properties"_sel); }
};
