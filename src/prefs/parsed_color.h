// What a colour string says, for where libcolorpicker does not say it.
#pragma once

#include "platform/ColorPicker.h"

namespace varnix {

/// Each from 0 to 1.
struct Rgba {
  double red, green, blue, alpha;
};

/// Reads "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha", a decimal number of which
/// fifteen digits count and more than 1 is 1. False for any other text, and for nil.
bool readColor(const char* text, Rgba& color);

/// The colour of the value, else of the fallback, by libcolorpicker or, where a device has none or
/// an old one, by the above. Nil where neither is of an accepted form.
UIColor* parsedColor(NSString* value, NSString* fallback);

}  // namespace varnix
