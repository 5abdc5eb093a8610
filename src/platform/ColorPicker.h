// libcolorpicker: colour strings.
#pragma once

#include "objc/metadata.h"
#include "platform/UIKit.h"

#pragma GCC visibility push(default)
extern "C" {
/// The colour of "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha" after it. A nil or
/// unreadable value gives the fallback's colour. Some versions throw on a value of one digit and
/// guess at malformed ones, so pass only values of an accepted form. The function itself is null if
/// the device lacks the library, or has one without this function.
OBJC_WEAK UIColor* LCPParseColorString(NSString* value, NSString* fallback);
}
#pragma GCC visibility pop
