#include "Foundation/keyed_archive_uid.h"

#include <string>

#include "Foundation/text.h"
#include "objc/define.h"

namespace {

struct ArchiveUid : NSObject {
  bool equals(NSObject* other) {
    return host::isArchiveUid(other) && static_cast<ArchiveUid*>(other)->index == index;
  }
  NSUInteger hashValue() { return index; }
  ArchiveUid* copy() { return static_cast<ArchiveUid*>(objc_retain(this)); }
  NSString* describe() {
    return host::makeString("<CFKeyedArchiverUID>{value = " + std::to_string(index) + "}");
  }

  std::uint32_t index;
};

}  // namespace

// The class behind everything for which CoreFoundation has no public class; here, only references.
OBJC_CLASS_NAMED(__NSCFType, NSObject, ArchiveUid, NSObject,
                 objc::Ivar<"index", &ArchiveUid::index>,
                 objc::Method<"isEqual:", &ArchiveUid::equals>,
                 objc::Method<"hash", &ArchiveUid::hashValue>,
                 objc::Method<"copy", &ArchiveUid::copy>,
                 objc::Method<"description", &ArchiveUid::describe>)

namespace host {

Strong<NSObject> makeArchiveUid(std::uint32_t index) {
  auto* uid = static_cast<ArchiveUid*>(class_createInstance(&objc_class___NSCFType, 0));
  uid->index = index;
  return Strong<NSObject>::adopt(uid);
}

bool isArchiveUid(NSObject* object) {
  return object != nullptr && object->isa == &objc_class___NSCFType;
}

std::uint32_t archiveUidIndex(NSObject* uid) {
  return isArchiveUid(uid) ? static_cast<ArchiveUid*>(uid)->index : 0;
}

}  // namespace host
