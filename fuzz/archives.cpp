// Keyed archives: they raise or become objects. What the library considers decodable must not
// raise.
#include <set>
#include <vector>

#include "hosted_process.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/UIKit.h"
#include "prefs/keyed_archive.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace {

/// Collects every reachable object once.
void reach(NSObject* object, std::set<NSObject*>& seen) {
  if (object == nullptr || !seen.insert(object).second) return;
  if (auto* dictionary = objc::as<NSDictionary>(object)) {
    NSArray* keys = send(dictionary, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      NSObject* key = send(keys, NSArray::objectAtIndex, i);
      reach(key, seen);
      reach(send(dictionary, NSDictionary::objectForKey, key), seen);
    }
  } else if (auto* array = objc::as<NSArray>(object)) {
    for (NSUInteger i = 0; i < send(array, NSArray::count); ++i)
      reach(send(array, NSArray::objectAtIndex, i), seen);
  }
}

void empty(NSObject* object) {
  if (send<bool>(object, "isKindOfClass:"_sel, objc_getClass("NSMutableDictionary"))) {
    NSArray* keys = send(static_cast<NSDictionary*>(object), NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i)
      send(static_cast<NSMutableDictionary*>(object), NSMutableDictionary::removeObjectForKey,
           send(keys, NSArray::objectAtIndex, i));
  } else if (send<bool>(object, "isKindOfClass:"_sel, objc_getClass("NSMutableArray"))) {
    while (const NSUInteger count = send(static_cast<NSArray*>(object), NSArray::count))
      send<void>(object, "removeObjectAtIndex:"_sel, count - 1);
  }
}

/// Empties all collections, since a mutable one may contain itself and would never be freed.
void takeApart(NSObject* root) {
  std::set<NSObject*> seen;
  reach(root, seen);
  std::vector<Strong<NSObject>> kept;
  for (NSObject* object : seen) kept.push_back(Strong<NSObject>::retain(object));
  for (const auto& object : kept) empty(object);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::hostApplication();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const objc::AutoreleasePool pool;
  NSData* archive = NSData::dataWithBytes(data, size);
  const bool isDecodable = varnix::isDecodableArchive(archive);
  try {
    const objc::AutoreleasePool inner;
    takeApart(NSKeyedUnarchiver::unarchiveObjectWithData(archive));
  } catch (const host::runtime::Exception&) {
    fuzz::require(!isDecodable);
  }
  return 0;
}
