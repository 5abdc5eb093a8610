// What the two halves of keyed archiving share.
#pragma once

#include <string>

#include "platform/Foundation.h"

namespace host::archive {

/// Objects within objects. Beyond that, the archive would be the end of somebody's stack.
inline constexpr std::size_t kMaximumDepth = 512;
inline constexpr long long kVersion = 100000;

/// The key under which a coder's value lies: one that begins with the archive's own sign gets a
/// second one. Raises for nil.
NSString* storedKey(NSString* key);

[[noreturn]] void raiseArgument(const std::string& reason);
/// For an archive that cannot be read, or holds something else than what is asked for.
[[noreturn]] void raiseOperation(const std::string& reason);

}  // namespace host::archive
