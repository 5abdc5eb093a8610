// A row's place in a table.
#include "objc/define.h"
#include "platform/Foundation.h"
#include "runtime/send.h"

namespace {

struct IndexPath : NSObject {
  static IndexPath* withRow(NSInteger row, NSInteger section);
  bool equals(NSObject* other);
  NSUInteger hashValue() { return static_cast<NSUInteger>(section * 1021 + row); }
  IndexPath* copyOf() { return static_cast<IndexPath*>(objc_retain(this)); }

  NSInteger row;
  NSInteger section;
};

}  // namespace

OBJC_CLASS_NAMED(NSIndexPath, NSObject, IndexPath, NSObject, objc::Readable<"row", &IndexPath::row>,
                 objc::Readable<"section", &IndexPath::section>,
                 objc::ClassMethod<"indexPathForRow:inSection:", &IndexPath::withRow>,
                 objc::Method<"isEqual:", &IndexPath::equals>,
                 objc::Method<"hash", &IndexPath::hashValue>,
                 objc::Method<"copy", &IndexPath::copyOf>)

IndexPath* IndexPath::withRow(NSInteger row, NSInteger section) {
  auto* made = static_cast<IndexPath*>(class_createInstance(&objc_class_NSIndexPath, 0));
  made->row = row;
  made->section = section;
  return static_cast<IndexPath*>(objc_autorelease(made));
}

bool IndexPath::equals(NSObject* other) {
  if (other == nullptr || !send(other, NSObject::isKindOfClass, &objc_class_NSIndexPath))
    return false;
  auto* path = static_cast<IndexPath*>(other);
  return path->row == row && path->section == section;
}
