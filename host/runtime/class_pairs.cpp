// Classes made at run time: copies of others, disposal.
#include "internal.h"
#include "objc/object.h"

using namespace host::runtime;

extern "C" {

/// A copy of the class under another name, with the same superclass, methods and variables.
HOST_EXPORT Class objc_duplicateClass(Class original, const char* name, std::size_t extraBytes) {
  if (original == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  Class copy = objc_allocateClassPair(original->superclass, name, extraBytes);
  if (copy == nullptr) return nullptr;
  const auto duplicate = [](Class from, Class to) {
    rw(to)->flags = rw(from)->flags;
    rw(to)->instanceSize = rw(from)->instanceSize;
    rw(to)->ivars = rw(from)->ivars;
    rw(to)->protocols = rw(from)->protocols;
    rw(to)->properties = rw(from)->properties;
    for (const auto& [selector, method] : rw(from)->methods)
      insertMethod(to, selector, method->types, method->implementation.load());
  };
  duplicate(original, copy);
  // Class methods stay those of the original's metaclass.
  rw(copy->isa)->methods = rw(original->isa)->methods;
  objc_registerClassPair(copy);
  return copy;
}

/// Ends a class that was made at run time. It must have neither instances nor subclasses; its
/// memory stays, since caches and messengers may still name it.
HOST_EXPORT void objc_disposeClassPair(Class cls) {
  if (cls == nullptr) return;
  std::scoped_lock guard(lock());
  if (cls->superclass != nullptr) {
    std::erase(rw(cls->superclass)->subclasses, cls);
    std::erase(rw(cls->superclass->isa)->subclasses, cls->isa);
  }
  unmapClass(cls);
  static auto* disposed = new std::vector<Class>;
  disposed->push_back(cls);
}

/// There are no zones.
HOST_EXPORT id class_createInstanceFromZone(Class cls, std::size_t extraBytes, void*) {
  return class_createInstance(cls, extraBytes);
}

/// Stores up to so many instances, and returns how many it made.
HOST_EXPORT unsigned class_createInstances(Class cls, std::size_t extraBytes, id* results,
                                           unsigned count) {
  for (unsigned i = 0; i < count; ++i) results[i] = class_createInstance(cls, extraBytes);
  return cls == nullptr ? 0 : count;
}
}
