// The keys of a text's attributes.
#include "platform/UIKit.h"

NSString* const NSForegroundColorAttributeName = "NSColor"_ns;
