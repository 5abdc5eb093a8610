// A part of a sequence.
#pragma once

#include "platform/Foundation.h"

struct _NSRange {
  NSUInteger location, length;
};
OBJC_STRUCT(_NSRange, NSUInteger, NSUInteger);

namespace host {

/// The index of what is nowhere.
inline constexpr NSUInteger kNotFound = ~NSUInteger{0} >> 1;

}  // namespace host
