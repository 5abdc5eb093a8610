// Reads colour strings when libcolorpicker cannot.
#pragma once

#include "platform/ColorPicker.h"

namespace varnix {

/// Each from 0 to 1.
struct Rgba {
  double red, green, blue, alpha;
};

/// Reads "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha". Alpha is a decimal number,
/// of which fifteen digits count; above 1 it counts as 1. False for any other text, and for nil.
bool readColor(const char* text, Rgba& color);

/// The colour of the value, or else of the fallback, read by libcolorpicker. On a device without
/// it, or with an old one, the function above reads them. Nil if neither has an accepted form.
UIColor* parsedColor(NSString* value, NSString* fallback);

}  // namespace varnix
