// The pane's texts in the user's language.
#pragma once

#include "platform/Foundation.h"

namespace varnix::pane {

/// The text of that key in Varnix.strings; the key itself where it is missing.
NSString* text(NSString* key);

/// The text that belongs to a name: text("KEY.NAME").
NSString* text(NSString* key, const char* name);

}  // namespace varnix::pane
