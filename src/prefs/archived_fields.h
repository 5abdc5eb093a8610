// The values of one archived object, by the keys that the platform's own classes use.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

/// A number that is not a boolean, which decoders treat differently; else nil.
NSNumber* archivedNumber(NSObject* value);

/// Whether it is a text, number, data or date, which an archive holds directly. False for nil.
bool isPlainValue(NSObject* value);

/// Whether a colour's components and a date's time, if present, are of the kinds that decoding
/// requires. Other fields are ignored.
bool haveDecodableKinds(NSDictionary* fields);

}  // namespace varnix
