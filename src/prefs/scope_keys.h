// The two keys that decide about an application's own value for a setting.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

struct ScopeKeys {
  NSString* switchKey;    ///< "IDENTIFIER_scope_enabled"
  NSString* overrideKey;  ///< "IDENTIFIER_KEY"
};

/// The keys for an identifier and a key, autoreleased or never freed. Frequent pairs are formatted
/// once and kept. Strings are compared by identity, so that a hit costs no message.
ScopeKeys scopeKeys(NSString* identifier, NSString* key);

}  // namespace varnix
