// Type encodings on systems of either width.
#pragma once

#include <algorithm>
#include <string>

#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

namespace test {

/// A 64-bit encoding as it is on this system, if every number in it is an NSInteger, an NSUInteger
/// or a CGFloat: on 32 bits with "i", "I" and "f", and "c" for a BOOL.
inline std::string nativeEncoding(std::string encoding) {
  if constexpr (sizeof(CGFloat) == sizeof(float)) {
    std::replace(encoding.begin(), encoding.end(), 'q', 'i');
    std::replace(encoding.begin(), encoding.end(), 'Q', 'I');
    std::replace(encoding.begin(), encoding.end(), 'd', 'f');
    std::replace(encoding.begin(), encoding.end(), 'B', 'c');
  }
  return encoding;
}

}  // namespace test
