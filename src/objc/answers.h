// Whether private methods exist. Ask before you rely on one.
#pragma once

#include "objc/agreement.h"
#include "objc/object.h"

namespace objc {

/// Whether instances of the class, which may be nil, have a method of that name with an encoding
/// that agrees.
bool hasMethod(Class cls, const char* name, const char* types);

/// Whether instances of the class understand the message, with the types that it declares.
template <class T, FixedString Name, class Signature>
bool understands(Class cls, Message<T, Name, Signature>) {
  objc_method* method = class_getInstanceMethod(cls, Selector<Name>::get());
  return method != nullptr &&
         agree(method_getTypeEncoding(method), kStored<Message<T, Name, Signature>::types()>.text);
}

/// Whether the class that declares the message understands it; no if there is no such class.
template <class T, FixedString Name, class Signature>
bool understands(ClassMessage<T, Name, Signature>) {
  return hasMethod(object_getClass(classOf<T>()), kStored<Name>.text,
                   kStored<ClassMessage<T, Name, Signature>::types()>.text);
}

/// Whether the object understands all of these; no for nil. The last class and its answer are
/// remembered, so that the usual question costs only a comparison.
template <class... M>
bool answers(NSObject* object, M... messages) {
  if (object == nullptr) return false;
  // The answer is in the lowest bit, which is zero in every class's address.
  constexpr std::uintptr_t kYes = 1;
  static constinit std::uintptr_t remembered = 0;
  Class cls = object_getClass(object);
  const auto asked = reinterpret_cast<std::uintptr_t>(cls);
  const std::uintptr_t last = __atomic_load_n(&remembered, __ATOMIC_RELAXED);
  if ((last & ~kYes) == asked) return (last & kYes) != 0;
  const bool all = (understands(cls, messages) && ...);
  __atomic_store_n(&remembered, all ? asked | kYes : asked, __ATOMIC_RELAXED);
  return all;
}

}  // namespace objc
