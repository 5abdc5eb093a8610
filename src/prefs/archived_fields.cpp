#include "prefs/archived_fields.h"

#include "platform/CoreFoundation.h"

namespace varnix {

namespace {

bool isFiniteNumber(NSObject* value) {
  auto* number = archivedNumber(value);
  if (number == nullptr) return false;
  const float read = send(number, NSNumber::floatValue);
  return read - read == 0;  // not true for infinity and NaN
}

bool isSmallInteger(NSObject* value) {
  auto* number = archivedNumber(value);
  if (number == nullptr) return false;
  const char type = *send(number, NSNumber::objCType);
  const long long read = send(number, NSNumber::longLongValue);
  return type != 'd' && type != 'f' && read >= 0 && read <= INT32_MAX;
}

bool isData(NSObject* value) { return objc::as<NSData>(value) != nullptr; }

template <NSUInteger N>
bool areAbsentOr(bool (*isOfKind)(NSObject*), NSDictionary* fields, NSString* const (&keys)[N]) {
  for (NSString* key : keys) {
    NSObject* value = send(fields, NSDictionary::objectForKey, key);
    if (value != nullptr && !isOfKind(value)) return false;
  }
  return true;
}

}  // namespace

NSNumber* archivedNumber(NSObject* value) {
  auto* number = objc::as<NSNumber>(value);
  if (number == nullptr) return nullptr;
  return CFGetTypeID(number) == CFGetTypeID(NSNumber::numberWithBool(true)) ? nullptr : number;
}

bool isPlainValue(NSObject* value) {
  return objc::as<NSString>(value) != nullptr || objc::as<NSNumber>(value) != nullptr ||
         objc::as<NSData>(value) != nullptr || objc::as<NSDate>(value) != nullptr;
}

bool haveDecodableKinds(NSDictionary* fields) {
  NSString* const numbers[] = {"UIRed"_ns,   "UIGreen"_ns, "UIBlue"_ns,
                               "UIAlpha"_ns, "UIWhite"_ns, "NS.time"_ns};
  NSString* const integers[] = {"UIColorComponentCount"_ns, "NSColorSpace"_ns};
  NSString* const data[] = {"NSRGB"_ns, "NSWhite"_ns};
  return areAbsentOr(isFiniteNumber, fields, numbers) &&
         areAbsentOr(isSmallInteger, fields, integers) && areAbsentOr(isData, fields, data);
}

}  // namespace varnix
