// Type encodings on systems of either width.
#pragma once

#include <algorithm>
#include <string>

#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

namespace test {

/// What an encoding of 64 bits is on this system, where every number in it is an NSInteger, an
/// NSUInteger or a CGFloat: with "i", "I" and "f" on one of 32 bits, and "c" for a BOOL.
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
