// Arrays. The mutable one is the same object with more methods.
#include <vector>

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

  void add(NSObject* object) {
    if (object == nullptr) {
      throw host::runtime::Exception("NSInvalidArgumentException",
                                     "attempt to insert nil into an array");
    }
    elements.push_back(Strong<NSObject>::retain(object));
  }
  NSUInteger size() { return elements.size(); }
  NSObject* at(NSUInteger index) {
    if (index >= elements.size()) {
      throw host::runtime::Exception("NSRangeException",
                                     "index " + std::to_string(index) + " beyond the end");
    }
    return elements[index];
  }
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
};

struct MutableArray : Array {
  void removeAt(NSUInteger index) {
    at(index);
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(index));
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
                 objc::ClassMethod<"array", &Array::empty>,
                 objc::ClassMethod<"arrayWithObjects:count:", &Array::withObjects>,
                 objc::Method<"count", &Array::size>, objc::Method<"objectAtIndex:", &Array::at>,
                 objc::Method<"lastObject", &Array::last>,
                 objc::Method<"containsObject:", &Array::contains>,
                 objc::Method<"isEqual:", &Array::equals>, objc::Method<"hash", &Array::hashValue>,
                 objc::Method<"description", &Array::describe>, objc::Method<"copy", &Array::copy>,
                 objc::Method<"mutableCopy", &Array::mutableCopy>)

OBJC_CLASS_NAMED(NSMutableArray, NSArray, MutableArray, Array,
                 objc::Method<"addObject:", &Array::add>,
                 objc::Method<"removeObjectAtIndex:", &MutableArray::removeAt>,
                 objc::Method<"copy", &MutableArray::immutableCopy>)

NSArray* Array::mutableCopy() { return duplicate(&objc_class_NSMutableArray, this); }
NSArray* MutableArray::immutableCopy() { return duplicate(&objc_class_NSArray, this); }
