// The root of all views of platform objects. C++ code never constructs or copies one.
#pragma once

#include "objc/message.h"

using namespace objc::literals;

struct NSString;

struct NSObject {
  NSObject() = delete;
  NSObject(const NSObject&) = delete;
  NSObject& operator=(const NSObject&) = delete;

  template <objc::FixedString Name, class Signature>
  using Message = objc::Message<NSObject, Name, Signature>;
  template <objc::FixedString Name, class Signature>
  using ClassMessage = objc::ClassMessage<NSObject, Name, Signature>;

  /// A new instance with a reference count of one, not initialised.
  static constexpr ClassMessage<"alloc", NSObject*()> alloc{};
  static constexpr Message<"init", NSObject*()> init{};
  static constexpr Message<"dealloc", void()> dealloc{};
  static constexpr Message<"copy", NSObject*()> copy{};
  /// Of strings and collections.
  static constexpr Message<"mutableCopy", NSObject*()> mutableCopy{};
  static constexpr Message<"class", Class()> class_{};
  static constexpr Message<"isKindOfClass:", bool(Class)> isKindOfClass{};
  static constexpr Message<"isEqual:", bool(NSObject*)> isEqual{};
  static constexpr Message<"respondsToSelector:", bool(SEL)> respondsToSelector{};
  static constexpr Message<"hash", std::size_t()> hash{};
  static constexpr Message<"description", NSString*()> description{};
  /// Of classes whose objects can be archived.
  static constexpr Message<"initWithCoder:", NSObject*(NSObject*)> initWithCoder{};

  Class isa;
};

namespace objc {

/// A new instance of T's class with a reference count of one, not initialised; nil in a process
/// without the class.
template <class T>
inline T* alloc() {
  return static_cast<T*>(send(classOf<T>(), NSObject::alloc));
}

/// The object as a T if it is a kind of T's class, else nil. A missing class has no instances.
template <class T>
inline T* as(NSObject* object) {
  Class cls = classOf<T>();
  if (object == nullptr || cls == nullptr || !send(object, NSObject::isKindOfClass, cls))
    return nullptr;
  return static_cast<T*>(object);
}

/// The object behind a C interface's own type.
template <class T>
inline NSObject* bridged(T* reference) {
  return reinterpret_cast<NSObject*>(reference);
}

/// Sends a message to the superclass of Current, the class whose method is running.
template <class Current, class T, FixedString Name, class R, class... A>
inline R sendSuper(std::type_identity_t<T>* self, Message<T, Name, R(A...)>,
                   std::type_identity_t<A>... arguments) {
  OBJC_USES("super " + kClassName<Current> + " " + Name + " " + kMethodEncoding<R, A...>);
  objc_super target{self, class_getSuperclass(classOf<Current>())};
  return detail::call<R, A...>(detail::superMessenger<R>(), &target, Selector<Name>::get(),
                               arguments...);
}

}  // namespace objc

using objc::sendSuper;
