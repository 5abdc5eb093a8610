// The root of every view onto a platform object. Nobody constructs or copies one in C++.
#pragma once

#include "objc/send.h"

using objc::send;
using objc::sendSuper;
using namespace objc::literals;

struct NSString;

struct NSObject {
  NSObject() = delete;
  NSObject(const NSObject&) = delete;
  NSObject& operator=(const NSObject&) = delete;

  bool isKindOfClass(Class cls) { return send<bool>(this, "isKindOfClass:"_sel, cls); }
  bool isEqual(NSObject* other) { return send<bool>(this, "isEqual:"_sel, other); }
  bool respondsToSelector(SEL s) { return send<bool>(this, "respondsToSelector:"_sel, s); }
  std::size_t hash() { return send<std::size_t>(this, "hash"_sel); }
  NSString* description() { return send<NSString*>(this, "description"_sel); }

  Class isa;
};

namespace objc {

/// A new instance of T's class with a reference count of one, not initialised; nil in a process
/// without the class.
template <class T>
inline T* alloc() {
  return send<T*>(classOf<T>(), "alloc"_sel);
}

/// The object as a T if it is a kind of T's class, else nil; a class that is not there has no
/// instances.
template <class T>
inline T* as(NSObject* object) {
  Class cls = classOf<T>();
  if (object == nullptr || cls == nullptr || !object->isKindOfClass(cls)) return nullptr;
  return static_cast<T*>(object);
}

}  // namespace objc
