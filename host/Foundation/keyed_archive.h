// Shared by the two halves of keyed archiving.
#pragma once

#include <string>

#include "platform/Foundation.h"

namespace host::archive {

/// The limit of nested objects. A deeper archive might overflow a reader's stack.
inline constexpr std::size_t kMaximumDepth = 512;
inline constexpr long long kVersion = 100000;

/// The key under which a coder's value is stored: if it begins with the archive's own prefix
/// character, it gets a second one. Raises for nil.
NSString* storedKey(NSString* key);

[[noreturn]] void raiseArgument(const std::string& reason);
/// For an archive that cannot be read, or holds something other than what is asked for.
[[noreturn]] void raiseOperation(const std::string& reason);

}  // namespace host::archive
