// One typed send. A nil receiver answers zero; the argument count is checked against the selector.
#pragma once

#include <type_traits>

#include "objc/class_name.h"
#include "objc/selector.h"

namespace objc {

namespace detail {

/// Whether a result travels through a hidden pointer that shifts the receiver to the second
/// argument. On arm64 the pointer has a register of its own; on armv7 every structure of ours is
/// returned so (only integer-like ones of one word are not).
template <class R>
consteval bool returnedThroughFirstArgument() {
  if constexpr (!std::is_class_v<R>) {
    return false;
  } else {
    static_assert(std::is_trivially_copyable_v<R>);
#if defined(__aarch64__)
    return false;
#elif defined(__x86_64__)
    return sizeof(R) > 16;
#else
    return true;
#endif
  }
}

template <class R>
inline IMP messenger() {
#if !defined(__aarch64__)
  if constexpr (returnedThroughFirstArgument<R>()) return &objc_msgSend_stret;
#endif
  return &objc_msgSend;
}

template <class R>
inline IMP superMessenger() {
#if !defined(__aarch64__)
  if constexpr (returnedThroughFirstArgument<R>()) return &objc_msgSendSuper_stret;
#endif
  return &objc_msgSendSuper;
}

}  // namespace detail

/// Sends a message. R is the result's type; the arguments' types must be the method's own.
template <class R, FixedString Name, class... A>
  requires(sizeof...(A) == Selector<Name>::kArguments)
inline R send(const void* receiver, Selector<Name>, A... arguments) {
  // The messenger zeroes registers for a nil receiver, but not a structure in memory.
  if constexpr (std::is_class_v<R>) {
    if (receiver == nullptr) return R{};
  }
  auto entry = reinterpret_cast<R (*)(const void*, SEL, A...)>(detail::messenger<R>());
  return entry(receiver, Selector<Name>::get(), arguments...);
}

/// Sends a message whose selector is known only when running.
template <class R, class... A>
inline R sendDynamic(const void* receiver, SEL selector, A... arguments) {
  if constexpr (std::is_class_v<R>) {
    if (receiver == nullptr) return R{};
  }
  auto entry = reinterpret_cast<R (*)(const void*, SEL, A...)>(detail::messenger<R>());
  return entry(receiver, selector, arguments...);
}

/// Sends a message with one named and any number of unnamed arguments, which travel differently
/// on arm64.
template <class R, FixedString Name, class First, class... A>
  requires(Selector<Name>::kArguments == 1)
inline R sendVariadic(const void* receiver, Selector<Name>, First first, A... arguments) {
  auto entry = reinterpret_cast<R (*)(const void*, SEL, First, ...)>(detail::messenger<R>());
  return entry(receiver, Selector<Name>::get(), first, arguments...);
}

/// The same with several named ones, whose types stand behind R.
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
inline R sendSuper(Current* self, Selector<Name>, A... arguments) {
  objc_super target{self, class_getSuperclass(classOf<Current>())};
  auto entry = reinterpret_cast<R (*)(objc_super*, SEL, A...)>(detail::superMessenger<R>());
  return entry(&target, Selector<Name>::get(), arguments...);
}

}  // namespace objc
