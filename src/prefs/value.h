// What a settings file may hold: a value of an unexpected kind must never raise.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

/// The value if it is a number or a string, else nil: nothing else has a boolean or integer
/// reading, and asking would raise.
inline NSObject* readable(NSObject* value) {
  if (objc::as<NSNumber>(value) != nullptr || objc::as<NSString>(value) != nullptr) return value;
  return nullptr;
}

}  // namespace varnix
