// Enumerators: the elements of a collection as it was when they were made.
#include <utility>

#include "Foundation/enumeration.h"
#include "Foundation/enumerator.h"
#include "objc/define.h"
#include "platform/Foundation.h"

namespace {

struct Enumerator : NSObject {
  NSObject* next() {
    return at < send(elements, NSArray::count) ? send(elements, NSArray::objectAtIndex, at++)
                                               : nullptr;
  }
  NSArray* rest() {
    NSMutableArray* rest = NSMutableArray::array();
    while (NSObject* object = next()) send(rest, NSMutableArray::addObject, object);
    return rest;
  }
  /// A loop takes the elements from the enumerator.
  NSUInteger enumerate(void* state, NSObject** buffer, NSUInteger capacity) {
    auto* loop = static_cast<host::EnumerationState*>(state);
    NSUInteger count = 0;
    while (count < capacity && at < send(elements, NSArray::count)) buffer[count++] = next();
    loop->state = 1;
    loop->items = buffer;
    loop->mutations = &loop->extra[0];
    return count;
  }

  Strong<NSArray> elements;
  NSUInteger at;
};

}  // namespace

OBJC_CLASS_NAMED(NSEnumerator, NSObject, Enumerator, NSObject,
                 objc::Ivar<"elements", &Enumerator::elements>, objc::Ivar<"at", &Enumerator::at>,
                 objc::Method<"nextObject", &Enumerator::next>,
                 objc::Method<"allObjects", &Enumerator::rest>,
                 objc::Method<"countByEnumeratingWithState:objects:count:", &Enumerator::enumerate>)

namespace host {

NSObject* makeEnumerator(NSArray* elements) {
  auto* made =
      static_cast<Enumerator*>(objc_autorelease(class_createInstance(&objc_class_NSEnumerator, 0)));
  made->elements = Strong<NSArray>::adopt(static_cast<NSArray*>(send(elements, NSObject::copy)));
  return made;
}

}  // namespace host
