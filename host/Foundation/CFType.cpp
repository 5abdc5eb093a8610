// CoreFoundation's view of objects: type numbers, and the references of keyed archives.
#include "Foundation/keyed_archive_uid.h"
#include "platform/CoreFoundation.h"

namespace {

enum Type : CFTypeID {
  kNone,
  kOther,
  kString,
  kNumber,
  kBoolean,
  kData,
  kDate,
  kArray,
  kDictionary,
  kArchiveUid,
};

bool isBoolean(NSNumber* number) { return *send(number, NSNumber::objCType) == 'c'; }

Type typeOf(NSObject* object) {
  if (object == nullptr) return kNone;
  if (host::isArchiveUid(object)) return kArchiveUid;
  if (objc::as<NSString>(object) != nullptr) return kString;
  if (auto* number = objc::as<NSNumber>(object)) return isBoolean(number) ? kBoolean : kNumber;
  if (objc::as<NSData>(object) != nullptr) return kData;
  if (objc::as<NSDate>(object) != nullptr) return kDate;
  if (objc::as<NSArray>(object) != nullptr) return kArray;
  if (objc::as<NSDictionary>(object) != nullptr) return kDictionary;
  return kOther;
}

NSObject* objectOf(CFTypeRef reference) {
  return static_cast<NSObject*>(const_cast<void*>(reference));
}

}  // namespace

extern "C" {

CFTypeID CFGetTypeID(CFTypeRef object) { return typeOf(objectOf(object)); }
CFTypeID _CFKeyedArchiverUIDGetTypeID() { return kArchiveUid; }
std::uint32_t _CFKeyedArchiverUIDGetValue(CFTypeRef uid) {
  return host::archiveUidIndex(objectOf(uid));
}
}
