// Reads the values in a settings file: one of an unexpected kind must never raise.
#pragma once

#include "platform/Foundation.h"

namespace varnix {

/// Whether a stored value can be read. Only a number and a string can; asking anything else would
/// raise.
inline bool isReadable(NSObject* value) {
  return objc::as<NSNumber>(value) != nullptr || objc::as<NSString>(value) != nullptr;
}

namespace detail {

template <auto OfNumber, auto OfString>
auto reading(NSObject* value) {
  if (auto* number = objc::as<NSNumber>(value)) return send(number, OfNumber);
  return send(objc::as<NSString>(value), OfString);
}

}  // namespace detail

// A stored value read as a type; zero or no if it cannot be read.
inline bool boolOf(NSObject* value) {
  return detail::reading<NSNumber::boolValue, NSString::boolValue>(value);
}
inline int intOf(NSObject* value) {
  return detail::reading<NSNumber::intValue, NSString::intValue>(value);
}
inline NSInteger integerOf(NSObject* value) {
  return detail::reading<NSNumber::integerValue, NSString::integerValue>(value);
}
inline float floatOf(NSObject* value) {
  return detail::reading<NSNumber::floatValue, NSString::floatValue>(value);
}

}  // namespace varnix
