// What dictionaries answer about their entries, through allKeys and objectForKey:.
#include "Foundation/enumeration.h"
#include "Foundation/enumerator.h"
#include "objc/block.h"
#include "objc/define.h"
#include "platform/Foundation.h"

namespace {

NSObject* valueOf(NSDictionary* dictionary, NSObject* key) {
  return send(dictionary, NSDictionary::objectForKey, key);
}

NSObject* keyEnumerator(NSDictionary* self, SEL) {
  return host::makeEnumerator(send(self, NSDictionary::allKeys));
}

NSObject* valueEnumerator(NSDictionary* self, SEL) {
  return host::makeEnumerator(send<NSArray*>(self, "allValues"_sel));
}

NSArray* keysFor(NSDictionary* self, SEL, NSObject* value) {
  NSMutableArray* keys = NSMutableArray::array();
  host::forEachElement(self, [&](NSObject* key) {
    if (send(valueOf(self, key), NSObject::isEqual, value))
      send(keys, NSMutableArray::addObject, key);
  });
  return keys;
}

using EntryVisitor = objc::Block<void(NSObject*, NSObject*, bool*)>;

void visitEntries(NSDictionary* self, SEL, EntryVisitor visitor) {
  NSArray* keys = send(self, NSDictionary::allKeys);
  bool stop = false;
  for (NSUInteger i = 0; !stop && i < send(keys, NSArray::count); ++i) {
    NSObject* key = send(keys, NSArray::objectAtIndex, i);
    (*visitor)(key, valueOf(self, key), &stop);
  }
}

bool equalsDictionary(NSDictionary* self, SEL, NSDictionary* other) {
  return send(self, NSObject::isEqual, static_cast<NSObject*>(other));
}

}  // namespace

OBJC_CATEGORY_OF_OWN(NSDictionary, Queries, objc::Method<"keyEnumerator", &keyEnumerator>,
                     objc::Method<"objectEnumerator", &valueEnumerator>,
                     objc::Method<"allKeysForObject:", &keysFor>,
                     objc::Method<"enumerateKeysAndObjectsUsingBlock:", &visitEntries>,
                     objc::Method<"isEqualToDictionary:", &equalsDictionary>)
