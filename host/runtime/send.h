// Messages by name, for code that uses any class. The types are those of the call.
#pragma once

#include "objc/object.h"

namespace objc {

/// Sends a message. R is the result's type; the arguments' types must be the method's own.
template <class R, FixedString Name, class... A>
  requires(sizeof...(A) == Selector<Name>::kArguments)
inline R send(const void* receiver, Selector<Name> selector, A... arguments) {
  return perform<R>(receiver, selector.get(), arguments...);
}

/// The same with a selector that is known only at run time.
template <class R, class... A>
inline R sendDynamic(const void* receiver, SEL selector, A... arguments) {
  return perform<R>(receiver, selector, arguments...);
}

/// Sends a message with one named and any number of unnamed arguments, which arm64 passes
/// differently.
template <class R, FixedString Name, class First, class... A>
  requires(Selector<Name>::kArguments == 1)
inline R sendVariadic(const void* receiver, Selector<Name>, First first, A... arguments) {
  auto entry = reinterpret_cast<R (*)(const void*, SEL, First, ...)>(detail::messenger<R>());
  return entry(receiver, Selector<Name>::get(), first, arguments...);
}

/// The same with several named arguments, whose types follow R.
template <class R, class... Named, FixedString Name, class... A>
  requires(sizeof...(Named) > 1 && sizeof...(Named) == Selector<Name>::kArguments)
inline R sendVariadic(const void* receiver, Selector<Name>, std::type_identity_t<Named>... named,
                      A... arguments) {
  auto entry = reinterpret_cast<R (*)(const void*, SEL, Named..., ...)>(detail::messenger<R>());
  return entry(receiver, Selector<Name>::get(), named..., arguments...);
}

/// Sends a message to the superclass of Current, the class whose method is running.
template <class R, class Current, FixedString Name, class... A>
  requires(sizeof...(A) == Selector<Name>::kArguments)
inline R sendSuper(Current* self, Selector<Name> selector, A... arguments) {
  objc_super target{self, class_getSuperclass(classOf<Current>())};
  return detail::call<R, A...>(detail::superMessenger<R>(), &target, selector.get(), arguments...);
}

}  // namespace objc

using objc::send;
using objc::sendSuper;
