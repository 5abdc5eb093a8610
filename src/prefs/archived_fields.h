// The values of one archived object, by the keys under which the platform's own classes keep them.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

/// A number that is no boolean, which a decoder tells apart; else nil.
NSNumber* archivedNumber(NSObject* value);

/// A text, number, data or date: what an archive holds as it is. Not nil.
bool isPlainValue(NSObject* value);

/// Whether the components of a colour and the moment of a date are of the kinds that decoding asks
/// for, where they are there. Anything else there may be is not looked at.
bool haveDecodableKinds(NSDictionary* fields);

}  // namespace varnix
