// Archives from the settings file, checked before the platform unarchives them.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

/// Whether a stored value is a keyed archive that this process can decode without raising: complete
/// data, with classes that exist here. The platform raises for anything else.
bool isDecodableArchive(NSObject* value);

}  // namespace varnix
