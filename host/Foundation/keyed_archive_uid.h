// A reference between the objects of a keyed archive, as an object of its own.
#pragma once

#include <cstdint>

#include "export.h"
#include "objc/strong.h"

namespace host {

/// A reference to the object of that index, owned by the caller.
HOST_EXPORT Strong<NSObject> makeArchiveUid(std::uint32_t index);
HOST_EXPORT bool isArchiveUid(NSObject* object);
/// Zero for any other object.
HOST_EXPORT std::uint32_t archiveUidIndex(NSObject* uid);

}  // namespace host
