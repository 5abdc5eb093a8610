// Dictionaries. The mutable one is the same object with more methods.
#include <algorithm>
#include <cstdarg>

#include "Foundation/enumeration.h"
#include "Foundation/hash_table.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "process/container.h"
#include "runtime/runtime.h"

namespace {

/// A key as the dictionary keeps it. A string never changes: its copy is itself.
Strong<NSObject> copyOf(NSObject* key) {
  if (host::isString(key)) return Strong<NSObject>::retain(key);
  return Strong<NSObject>::adopt(send<NSObject*>(key, "copy"_sel));
}

struct Dictionary : NSDictionary {
  template <class D = Dictionary>
  static D* make(Class cls) {
    return static_cast<D*>(objc_autorelease(class_createInstance(cls, 0)));
  }
  static Dictionary* empty(Class cls, SEL) { return make(cls); }
  static Dictionary* withObject(Class cls, SEL, NSObject* object, NSObject* key) {
    Dictionary* made = make(cls);
    made->put(object, key);
    return made;
  }
  /// Values and keys in turn, up to the first nil; a value without a key is left out.
  static Dictionary* withObjectsAndKeys(Class cls, SEL, NSObject* first, ...) {
    Dictionary* made = make(cls);
    va_list rest;
    va_start(rest, first);
    for (NSObject* object = first; object != nullptr; object = va_arg(rest, NSObject*)) {
      NSObject* key = va_arg(rest, NSObject*);
      if (key == nullptr) break;
      made->put(object, key);
    }
    va_end(rest);
    return made;
  }
  static Dictionary* withObjects(Class cls, SEL, NSObject* const* objects, NSObject* const* keys,
                                 NSUInteger count) {
    return make(cls)->initWithObjects(objects, keys, count);
  }
  Dictionary* initWithObjects(NSObject* const* objects, NSObject* const* keys, NSUInteger total) {
    for (NSUInteger i = 0; i < total; ++i) put(objects[i], keys[i]);
    return this;
  }
  static Dictionary* withArrays(Class cls, SEL, NSArray* objects, NSArray* keys) {
    Dictionary* made = make(cls);
    const NSUInteger count = send(keys, NSArray::count);
    if (send(objects, NSArray::count) != count) {
      throw host::runtime::Exception("NSInvalidArgumentException",
                                     "as many objects as keys are needed");
    }
    for (NSUInteger i = 0; i < count; ++i)
      made->put(send(objects, NSArray::objectAtIndex, i), send(keys, NSArray::objectAtIndex, i));
    return made;
  }
  static Dictionary* withDictionary(Class cls, SEL, NSDictionary* other) {
    return make(cls)->initWithDictionary(other);
  }
  Dictionary* initWithDictionary(NSDictionary* other) {
    addAll(other);
    return this;
  }
  NSUInteger enumerate(void* state, NSObject** buffer, NSUInteger capacity) {
    const auto& entries = table.entries();
    return host::enumerate(static_cast<host::EnumerationState*>(state), buffer, capacity,
                           entries.size(), &mutations,
                           [&](std::size_t i) { return entries[i].key.get(); });
  }
  NSArray* values() {
    NSMutableArray* values = NSMutableArray::array();
    for (const auto& entry : table.entries()) send(values, NSMutableArray::addObject, entry.value);
    return values;
  }

  static Dictionary* withCapacity(Class cls, SEL, NSUInteger count) {
    Dictionary* made = make(cls);
    made->table.reserve(count);
    return made;
  }
  static NSDictionary* withContentsOfFile(NSString* path) {
    return objc::as<NSDictionary>(host::propertyListFromFile(host::readablePath(host::text(path))));
  }

  void put(NSObject* object, NSObject* key) {
    if (object == nullptr || key == nullptr) {
      throw host::runtime::Exception("NSInvalidArgumentException",
                                     "attempt to insert nil into a dictionary");
    }
    ++mutations;
    table.set(copyOf(key), Strong<NSObject>::retain(object));
  }
  void addAll(NSDictionary* other) {
    if (other == nullptr) return;
    ++mutations;
    // Keys of a dictionary are copies already.
    table.addAll(static_cast<Dictionary*>(other)->table);
  }

  NSUInteger size() { return table.entries().size(); }
  NSObject* find(NSObject* key) { return table.find(key); }
  NSArray* keys() {
    NSMutableArray* keys = NSMutableArray::array();
    for (const auto& entry : table.entries()) send(keys, NSMutableArray::addObject, entry.key);
    return keys;
  }
  bool equals(NSObject* other) {
    if (this == other) return true;
    auto* dictionary = objc::as<NSDictionary>(other);
    if (dictionary == nullptr || send(dictionary, NSDictionary::count) != size()) return false;
    for (const auto& entry : table.entries()) {
      NSObject* theirs = send(dictionary, NSDictionary::objectForKey, entry.key);
      if (theirs == nullptr || !send(entry.value, NSObject::isEqual, theirs)) return false;
    }
    return true;
  }
  NSUInteger hashValue() { return size(); }
  NSString* describe() {
    std::string words = "{";
    for (const auto& entry : table.entries()) {
      words += " " + std::string(host::text(send(entry.key, NSObject::description))) + " = " +
               std::string(host::text(send(entry.value, NSObject::description))) + ";";
    }
    return host::makeString(words + " }");
  }
  bool write(NSString* path, bool atomically) {
    const std::string file = host::hostPath(host::text(path));
    const auto xml = host::xmlFromPropertyList(this);
    return xml && !file.empty() && host::writeFile(file, *xml, atomically);
  }
  NSDictionary* copy();
  NSDictionary* mutableCopy();

  host::HashTable table;
  unsigned long mutations;  ///< changes with every change, for loops
};

struct MutableDictionary : Dictionary {
  MutableDictionary* initWithCapacity(NSUInteger capacity) {
    table.reserve(std::min<NSUInteger>(capacity, 1024));
    return this;
  }
  void removeKey(NSObject* key) {
    ++mutations;
    table.remove(key);
  }
  void removeKeys(NSArray* keys) {
    host::forEachElement(keys, [this](NSObject* key) { removeKey(key); });
  }
  void removeAll() {
    ++mutations;
    table = host::HashTable();
  }
  /// Nil removes.
  void setSubscript(NSObject* object, NSObject* key) {
    if (object == nullptr && key != nullptr) removeKey(key);
    else put(object, key);
  }
  NSDictionary* immutableCopy();
};

}  // namespace

OBJC_CLASS_NAMED(
    NSDictionary, NSObject, Dictionary, NSObject, objc::Ivar<"table", &Dictionary::table>,
    objc::Ivar<"mutations", &Dictionary::mutations>,
    objc::ClassMethod<"dictionaryWithObjects:forKeys:count:", &Dictionary::withObjects>,
    objc::ClassMethod<"dictionaryWithObjects:forKeys:", &Dictionary::withArrays>,
    objc::ClassMethod<"dictionaryWithDictionary:", &Dictionary::withDictionary>,
    objc::Method<"initWithObjects:forKeys:count:", &Dictionary::initWithObjects>,
    objc::Method<"initWithDictionary:", &Dictionary::initWithDictionary>,
    objc::Method<"objectForKeyedSubscript:", &Dictionary::find>,
    objc::Method<"countByEnumeratingWithState:objects:count:", &Dictionary::enumerate>,
    objc::Method<"allValues", &Dictionary::values>,
    objc::ClassMethod<"dictionary", &Dictionary::empty>,
    objc::ClassMethod<"dictionaryWithObject:forKey:", &Dictionary::withObject>,
    objc::ClassMethod<"dictionaryWithObjectsAndKeys:", &Dictionary::withObjectsAndKeys>,
    objc::ClassMethod<"dictionaryWithContentsOfFile:", &Dictionary::withContentsOfFile>,
    objc::Method<"count", &Dictionary::size>, objc::Method<"objectForKey:", &Dictionary::find>,
    objc::Method<"allKeys", &Dictionary::keys>, objc::Method<"isEqual:", &Dictionary::equals>,
    objc::Method<"hash", &Dictionary::hashValue>,
    objc::Method<"description", &Dictionary::describe>,
    objc::Method<"writeToFile:atomically:", &Dictionary::write>,
    objc::Method<"copy", &Dictionary::copy>, objc::Method<"mutableCopy", &Dictionary::mutableCopy>)

OBJC_CLASS_NAMED(NSMutableDictionary, NSDictionary, MutableDictionary, Dictionary,
                 objc::ClassMethod<"dictionaryWithCapacity:", &Dictionary::withCapacity>,
                 objc::Method<"initWithCapacity:", &MutableDictionary::initWithCapacity>,
                 objc::Method<"setObject:forKey:", &Dictionary::put>,
                 objc::Method<"setObject:forKeyedSubscript:", &MutableDictionary::setSubscript>,
                 objc::Method<"removeObjectsForKeys:", &MutableDictionary::removeKeys>,
                 objc::Method<"removeAllObjects", &MutableDictionary::removeAll>,
                 objc::Method<"removeObjectForKey:", &MutableDictionary::removeKey>,
                 objc::Method<"addEntriesFromDictionary:", &Dictionary::addAll>,
                 objc::Method<"copy", &MutableDictionary::immutableCopy>)

NSDictionary* Dictionary::copy() { return static_cast<NSDictionary*>(objc_retain(this)); }

NSDictionary* Dictionary::mutableCopy() {
  auto* made = static_cast<Dictionary*>(class_createInstance(&objc_class_NSMutableDictionary, 0));
  made->addAll(this);
  return made;
}

NSDictionary* MutableDictionary::immutableCopy() {
  auto* made = static_cast<Dictionary*>(class_createInstance(&objc_class_NSDictionary, 0));
  made->addAll(this);
  return made;
}
