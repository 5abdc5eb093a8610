// Colour strings, checked before libcolorpicker sees them.
#pragma once

#include "platform/ColorPicker.h"

namespace varnix {

/// The colour of a stored value, else of the fallback: for nil, for a value that is no string, and
/// for a string that is none of "#RRGGBB", "RRGGBB", "#RGB", each optionally with ":alpha". Some
/// versions of libcolorpicker throw on other strings or make up a colour.
UIColor* parseColor(NSObject* value, NSString* fallback);

}  // namespace varnix
