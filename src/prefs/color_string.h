// Colour strings, checked before libcolorpicker sees them.
#pragma once

#include "platform/ColorPicker.h"

namespace varnix {

/// The colour of a stored value. For nil, for a value that is not a string, and for a string that
/// is not "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha", the colour of the fallback.
/// Some versions of libcolorpicker throw on other strings, or make up a colour.
UIColor* parseColor(NSObject* value, NSString* fallback);

}  // namespace varnix
