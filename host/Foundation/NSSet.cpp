// Sets. The mutable one is the same object with more methods.
#include <cstdarg>

#include "Foundation/argument_list.h"
#include "Foundation/enumeration.h"
#include "Foundation/enumerator.h"
#include "Foundation/hash_table.h"
#include "Foundation/text.h"
#include "objc/block.h"
#include "objc/define.h"
#include "runtime/runtime.h"

namespace {

struct Set : NSObject {
  static Set* make(Class cls) {
    return static_cast<Set*>(objc_autorelease(class_createInstance(cls, 0)));
  }
  static Set* empty(Class cls, SEL) { return make(cls); }
  static Set* withObject(Class cls, SEL, NSObject* object) {
    Set* made = make(cls);
    made->add(object);
    return made;
  }
  /// Up to the first nil.
  static Set* withList(Class cls, SEL, NSObject* first, ...) {
    Set* made = make(cls);
    va_list rest;
    va_start(rest, first);
    host::forEachArgument(first, rest, [made](NSObject* object) { made->add(object); });
    va_end(rest);
    return made;
  }
  static Set* withArray(Class cls, SEL, NSArray* array) { return make(cls)->initWithArray(array); }
  static Set* withSet(Class cls, SEL, Set* other) {
    Set* made = make(cls);
    made->unite(other);
    return made;
  }
  Set* initWithArray(NSArray* array) {
    host::forEachElement(array, [this](NSObject* object) { add(object); });
    return this;
  }

  void add(NSObject* object) {
    if (object == nullptr)
      throw host::runtime::Exception("NSInvalidArgumentException",
                                     "attempt to insert nil into a set");
    if (table.find(object) != nullptr) return;
    ++mutations;
    table.set(Strong<NSObject>::retain(object), Strong<NSObject>::retain(object));
  }
  void unite(Set* other) {
    host::forEachElement(other, [this](NSObject* object) { add(object); });
  }

  NSUInteger size() { return table.entries().size(); }
  NSObject* member(NSObject* object) { return table.find(object); }
  bool contains(NSObject* object) { return table.find(object) != nullptr; }
  NSObject* any() { return size() == 0 ? nullptr : table.entries().front().key.get(); }
  NSArray* all() {
    NSMutableArray* all = NSMutableArray::array();
    for (const auto& entry : table.entries()) send(all, NSMutableArray::addObject, entry.key);
    return all;
  }
  NSUInteger enumerate(void* state, NSObject** buffer, NSUInteger capacity) {
    const auto& entries = table.entries();
    return host::enumerate(static_cast<host::EnumerationState*>(state), buffer, capacity,
                           entries.size(), &mutations,
                           [&](std::size_t i) { return entries[i].key.get(); });
  }
  NSObject* enumerator() { return host::makeEnumerator(all()); }
  void visit(objc::Block<void(NSObject*, bool*)> visitor) {
    NSArray* elements = all();
    bool stop = false;
    for (NSUInteger i = 0; !stop && i < send(elements, NSArray::count); ++i)
      (*visitor)(send(elements, NSArray::objectAtIndex, i), &stop);
  }
  bool isSubset(Set* other) {
    for (const auto& entry : table.entries())
      if (other == nullptr || !other->contains(entry.key)) return false;
    return true;
  }
  bool intersects(Set* other) {
    for (const auto& entry : table.entries())
      if (other != nullptr && other->contains(entry.key)) return true;
    return false;
  }
  bool equalsSet(Set* other) {
    return other != nullptr && size() == other->size() && isSubset(other);
  }
  bool equals(NSObject* other);
  NSUInteger hashValue() { return size(); }
  NSString* describe() {
    std::string words = "{(";
    for (const auto& entry : table.entries())
      words += " " + std::string(host::text(send(entry.key, NSObject::description))) + ",";
    return host::makeString(words + " )}");
  }
  Set* copy() { return static_cast<Set*>(objc_retain(this)); }
  Set* mutableCopy();

  host::HashTable table;
  unsigned long mutations;  ///< changes with every change, for loops
};

struct MutableSet : Set {
  static MutableSet* withCapacity(Class cls, SEL, NSUInteger) {
    return static_cast<MutableSet*>(make(cls));
  }
  void remove(NSObject* object) {
    ++mutations;
    table.remove(object);
  }
  void removeAll() {
    ++mutations;
    table = host::HashTable();
  }
  void addArray(NSArray* array) { initWithArray(array); }
  void minus(Set* other) {
    host::forEachElement(other, [this](NSObject* object) { remove(object); });
  }
  void intersect(Set* other) {
    host::forEachElement(all(), [this, other](NSObject* object) {
      if (other == nullptr || !other->contains(object)) remove(object);
    });
  }
  Set* immutableCopy();
};

}  // namespace

OBJC_CLASS_NAMED(NSSet, NSObject, Set, NSObject, objc::Ivar<"table", &Set::table>,
                 objc::Ivar<"mutations", &Set::mutations>, objc::ClassMethod<"set", &Set::empty>,
                 objc::ClassMethod<"setWithObject:", &Set::withObject>,
                 objc::ClassMethod<"setWithObjects:", &Set::withList>,
                 objc::ClassMethod<"setWithArray:", &Set::withArray>,
                 objc::ClassMethod<"setWithSet:", &Set::withSet, "@@:@">,
                 objc::Method<"initWithArray:", &Set::initWithArray>,
                 objc::Method<"count", &Set::size>, objc::Method<"member:", &Set::member>,
                 objc::Method<"containsObject:", &Set::contains>,
                 objc::Method<"anyObject", &Set::any>, objc::Method<"allObjects", &Set::all>,
                 objc::Method<"countByEnumeratingWithState:objects:count:", &Set::enumerate>,
                 objc::Method<"objectEnumerator", &Set::enumerator>,
                 objc::Method<"enumerateObjectsUsingBlock:", &Set::visit>,
                 objc::Method<"isSubsetOfSet:", &Set::isSubset>,
                 objc::Method<"intersectsSet:", &Set::intersects>,
                 objc::Method<"isEqualToSet:", &Set::equalsSet>,
                 objc::Method<"isEqual:", &Set::equals>, objc::Method<"hash", &Set::hashValue>,
                 objc::Method<"description", &Set::describe>, objc::Method<"copy", &Set::copy>,
                 objc::Method<"mutableCopy", &Set::mutableCopy>)

OBJC_CLASS_NAMED(NSMutableSet, NSSet, MutableSet, Set,
                 objc::ClassMethod<"setWithCapacity:", &MutableSet::withCapacity>,
                 objc::Method<"addObject:", &Set::add>,
                 objc::Method<"removeObject:", &MutableSet::remove>,
                 objc::Method<"removeAllObjects", &MutableSet::removeAll>,
                 objc::Method<"addObjectsFromArray:", &MutableSet::addArray>,
                 objc::Method<"unionSet:", &Set::unite>,
                 objc::Method<"minusSet:", &MutableSet::minus>,
                 objc::Method<"intersectSet:", &MutableSet::intersect>,
                 objc::Method<"copy", &MutableSet::immutableCopy>)

bool Set::equals(NSObject* other) {
  if (this == other) return true;
  if (other == nullptr || !send(other, NSObject::isKindOfClass, &objc_class_NSSet)) return false;
  return equalsSet(static_cast<Set*>(other));
}

namespace {

Set* duplicateSet(Class cls, Set* original) {
  auto* made = static_cast<Set*>(class_createInstance(cls, 0));
  made->unite(original);
  return made;
}

}  // namespace

Set* Set::mutableCopy() { return duplicateSet(&objc_class_NSMutableSet, this); }
Set* MutableSet::immutableCopy() { return duplicateSet(&objc_class_NSSet, this); }
