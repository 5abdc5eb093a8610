// Arrays. The mutable one is the same object with more methods.
#include <algorithm>
#include <cstdarg>
#include <vector>

#include "Foundation/argument_list.h"
#include "Foundation/enumeration.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/runtime.h"

namespace {

struct Array : NSArray {
  static Array* make(Class cls) {
    return static_cast<Array*>(objc_autorelease(class_createInstance(cls, 0)));
  }
  static Array* empty(Class cls, SEL) { return make(cls); }
  static Array* withObjects(Class cls, SEL, NSObject* const* objects, NSUInteger count) {
    Array* array = make(cls);
    for (NSUInteger i = 0; i < count; ++i) array->add(objects[i]);
    return array;
  }

  /// Up to the first nil.
  static Array* withList(Class cls, SEL, NSObject* first, ...) {
    Array* made = make(cls);
    va_list rest;
    va_start(rest, first);
    host::forEachArgument(first, rest, [made](NSObject* object) { made->add(object); });
    va_end(rest);
    return made;
  }
  static Array* withObject(Class cls, SEL, NSObject* object) {
    Array* made = make(cls);
    made->add(object);
    return made;
  }
  static Array* withArray(Class cls, SEL, NSArray* other) {
    Array* made = make(cls);
    made->addAll(other);
    return made;
  }
  Array* initWithArray(NSArray* other) {
    addAll(other);
    return this;
  }
  Array* initWithObjects(NSObject* const* objects, NSUInteger total) {
    for (NSUInteger i = 0; i < total; ++i) add(objects[i]);
    return this;
  }

  static Strong<NSObject> notNil(NSObject* object) {
    if (object == nullptr) {
      throw host::runtime::Exception("NSInvalidArgumentException",
                                     "attempt to insert nil into an array");
    }
    return Strong<NSObject>::retain(object);
  }
  void add(NSObject* object) {
    elements.push_back(notNil(object));
    ++mutations;
  }
  void addAll(NSArray* other) {
    // The other may be this one.
    const NSUInteger total = send(other, NSArray::count);
    for (NSUInteger i = 0; i < total; ++i) add(send(other, NSArray::objectAtIndex, i));
  }
  NSUInteger enumerate(void* state, NSObject** buffer, NSUInteger capacity) {
    return host::enumerate(static_cast<host::EnumerationState*>(state), buffer, capacity,
                           elements.size(), &mutations,
                           [this](std::size_t i) { return elements[i].get(); });
  }
  NSUInteger size() { return elements.size(); }
  NSObject* at(NSUInteger index) {
    if (index >= elements.size()) {
      throw host::runtime::Exception("NSRangeException",
                                     "index " + std::to_string(index) + " beyond the end");
    }
    return elements[index];
  }
  NSObject* first() { return elements.empty() ? nullptr : elements.front().get(); }
  NSObject* last() { return elements.empty() ? nullptr : elements.back().get(); }
  bool contains(NSObject* wanted) {
    for (const auto& element : elements) {
      if (element.get() == wanted ||
          (wanted != nullptr && send(element, NSObject::isEqual, wanted)))
        return true;
    }
    return false;
  }
  bool equals(NSObject* other) {
    auto* array = objc::as<NSArray>(other);
    if (array == nullptr || send(array, NSArray::count) != size()) return false;
    for (NSUInteger i = 0; i < size(); ++i) {
      if (!send(elements[i], NSObject::isEqual, send(array, NSArray::objectAtIndex, i)))
        return false;
    }
    return true;
  }
  NSUInteger hashValue() { return size(); }
  NSString* describe() {
    std::string words = "(";
    for (const auto& element : elements)
      words += " " + std::string(host::text(send(element, NSObject::description))) + ",";
    return host::makeString(words + " )");
  }
  NSArray* copy() { return static_cast<NSArray*>(objc_retain(this)); }
  NSArray* mutableCopy();

  std::vector<Strong<NSObject>> elements;
  unsigned long mutations;  ///< changes with every change, for loops
};

struct MutableArray : Array {
  static MutableArray* withCapacity(Class cls, SEL, NSUInteger) {
    return static_cast<MutableArray*>(make(cls));
  }
  MutableArray* initWithCapacity(NSUInteger capacity) {
    elements.reserve(std::min<NSUInteger>(capacity, 1024));
    return this;
  }
  auto place(NSUInteger index) { return elements.begin() + static_cast<std::ptrdiff_t>(index); }
  void removeAt(NSUInteger index) {
    at(index);
    const Strong<NSObject> removed = elements[index];
    elements.erase(place(index));
    ++mutations;
  }
  void insert(NSObject* object, NSUInteger index) {
    if (index > elements.size()) at(index);
    elements.insert(place(index), notNil(object));
    ++mutations;
  }
  void replace(NSUInteger index, NSObject* object) {
    at(index);
    Strong<NSObject> kept = notNil(object);
    std::swap(elements[index], kept);
    ++mutations;
  }
  /// The index after the last one adds.
  void setAt(NSObject* object, NSUInteger index) {
    if (index == elements.size()) add(object);
    else replace(index, object);
  }
  void removeLast() {
    if (!elements.empty()) removeAt(elements.size() - 1);
  }
  void removeEqual(NSObject* object) {
    for (NSUInteger i = elements.size(); i-- > 0;)
      if (elements[i].get() == object || send(elements[i], NSObject::isEqual, object)) removeAt(i);
  }
  void removeAll() {
    std::vector<Strong<NSObject>> removed;
    removed.swap(elements);
    ++mutations;
  }
  void exchange(NSUInteger one, NSUInteger other) {
    at(one);
    at(other);
    std::swap(elements[one], elements[other]);
    ++mutations;
  }
  NSArray* immutableCopy();
};

Array* duplicate(Class cls, Array* original) {
  auto* made = static_cast<Array*>(class_createInstance(cls, 0));
  made->elements = original->elements;
  return made;
}

}  // namespace

OBJC_CLASS_NAMED(NSArray, NSObject, Array, NSObject, objc::Ivar<"elements", &Array::elements>,
                 objc::Ivar<"mutations", &Array::mutations>,
                 objc::ClassMethod<"arrayWithObjects:", &Array::withList>,
                 objc::ClassMethod<"arrayWithObject:", &Array::withObject>,
                 objc::ClassMethod<"arrayWithArray:", &Array::withArray>,
                 objc::Method<"initWithArray:", &Array::initWithArray>,
                 objc::Method<"initWithObjects:count:", &Array::initWithObjects>,
                 objc::Method<"firstObject", &Array::first>,
                 objc::Method<"objectAtIndexedSubscript:", &Array::at>,
                 objc::Method<"countByEnumeratingWithState:objects:count:", &Array::enumerate>,
                 objc::ClassMethod<"array", &Array::empty>,
                 objc::ClassMethod<"arrayWithObjects:count:", &Array::withObjects>,
                 objc::Method<"count", &Array::size>, objc::Method<"objectAtIndex:", &Array::at>,
                 objc::Method<"lastObject", &Array::last>,
                 objc::Method<"containsObject:", &Array::contains>,
                 objc::Method<"isEqual:", &Array::equals>, objc::Method<"hash", &Array::hashValue>,
                 objc::Method<"description", &Array::describe>, objc::Method<"copy", &Array::copy>,
                 objc::Method<"mutableCopy", &Array::mutableCopy>)

OBJC_CLASS_NAMED(NSMutableArray, NSArray, MutableArray, Array,
                 objc::ClassMethod<"arrayWithCapacity:", &MutableArray::withCapacity>,
                 objc::Method<"initWithCapacity:", &MutableArray::initWithCapacity>,
                 objc::Method<"addObject:", &Array::add>,
                 objc::Method<"addObjectsFromArray:", &Array::addAll>,
                 objc::Method<"insertObject:atIndex:", &MutableArray::insert>,
                 objc::Method<"replaceObjectAtIndex:withObject:", &MutableArray::replace>,
                 objc::Method<"setObject:atIndexedSubscript:", &MutableArray::setAt>,
                 objc::Method<"removeLastObject", &MutableArray::removeLast>,
                 objc::Method<"removeObject:", &MutableArray::removeEqual>,
                 objc::Method<"removeAllObjects", &MutableArray::removeAll>,
                 objc::Method<"exchangeObjectAtIndex:withObjectAtIndex:", &MutableArray::exchange>,
                 objc::Method<"removeObjectAtIndex:", &MutableArray::removeAt>,
                 objc::Method<"copy", &MutableArray::immutableCopy>)

NSArray* Array::mutableCopy() { return duplicate(&objc_class_NSMutableArray, this); }
NSArray* MutableArray::immutableCopy() { return duplicate(&objc_class_NSArray, this); }
