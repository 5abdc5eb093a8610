// Messages. Each is declared once, with its whole signature, where its class is declared. A send, a
// replacement and a class's own table use that declaration:
//
//   struct UISwitch : objc::View<UISwitch, UIView> {
//     static constexpr Message<"setOnTintColor:", void(UIColor*)> setOnTintColor{};
//   };
//   send(toggle, UISwitch::setOnTintColor, color);
//
// A message to nil returns zero. Arguments are converted to the declared types, so that neither a
// bare nullptr nor a 0 for a floating-point number is passed as another type.
#pragma once

#include <type_traits>

#include "objc/class_name.h"
#include "objc/encoding.h"
#include "objc/selector.h"
#include "objc/uses.h"

namespace objc {

/// How a call passes a value. A BOOL is a byte, and any value but zero is yes: on 32 bits the
/// platform's own methods may return values other than 1.
template <class T>
using Traveling = std::conditional_t<std::is_same_v<T, bool>, unsigned char, T>;

namespace detail {

/// Whether a result is returned through a hidden pointer that shifts the receiver to the second
/// argument. On arm64 the pointer has a register of its own. On armv7 all our structures are
/// returned like that: only a structure of one word of integers is not, and none may be declared.
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
    static_assert(isOfFractions<R>() || sizeof(R) > sizeof(void*),
                  "a structure that 32 bits return in a register");
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

/// Calls an implementation or a messenger with the types of a signature.
template <class R, class... A, class Receiver>
inline R call(IMP entry, Receiver* receiver, SEL selector, A... arguments) {
  auto typed = reinterpret_cast<Traveling<R> (*)(Receiver*, SEL, Traveling<A>...)>(entry);
  if constexpr (std::is_void_v<R>) typed(receiver, selector, Traveling<A>(arguments)...);
  else if constexpr (std::is_same_v<R, bool>)
    return typed(receiver, selector, Traveling<A>(arguments)...) != 0;
  else return typed(receiver, selector, Traveling<A>(arguments)...);
}

/// A function of ours as the run-time calls it: for a BOOL argument, any byte but zero is yes.
template <auto Fn>
struct Entry;

template <class R, class... A, R (*Fn)(A...)>
struct Entry<Fn> {
  static Traveling<R> call(Traveling<A>... arguments) { return Fn(A(arguments)...); }
  static constexpr auto kCall = [] {
    if constexpr ((std::is_same_v<A, bool> || ...)) return &call;
    else return Fn;
  }();
};

/// What both kinds of declarations have in common.
template <class T, FixedString Name, class Signature>
struct Declaration;

template <class T, FixedString Name, class R, class... A>
struct Declaration<T, Name, R(A...)> {
  static_assert(Name.count(':') == sizeof...(A), "an argument for each colon");
  using Class = T;
  using Signature = R(A...);
  using Result = R;
  static constexpr auto kName = Name;
  /// The method's encoding. A function, since the classes in it may be incomplete where it is
  /// declared.
  static consteval auto types() { return kMethodEncoding<R, A...>; }

  /// The selector, to pass as an argument.
  operator SEL() const { return Selector<Name>::get(); }
};

/// With further arguments that have no declared types: arm64 passes these differently.
template <class T, FixedString Name, class R, class... A>
struct Declaration<T, Name, R(A..., ...)> {
  static_assert(Name.count(':') == sizeof...(A), "an argument for each colon");
  using Class = T;
  using Signature = R(A..., ...);
  using Result = R;
  static constexpr auto kName = Name;
  static consteval auto types() { return kMethodEncoding<R, A...>; }

  operator SEL() const { return Selector<Name>::get(); }

  template <class Receiver, class... Unnamed>
  static R callVariadic(Receiver* receiver, A... named, Unnamed... arguments) {
    static_assert((!std::is_null_pointer_v<Unnamed> && ...), "a null of which type?");
    auto entry = reinterpret_cast<R (*)(Receiver*, SEL, A..., ...)>(messenger<R>());
    return entry(receiver, Selector<Name>::get(), named..., arguments...);
  }
};

}  // namespace detail

/// A message to an instance of the class that T mirrors.
template <class T, FixedString Name, class Signature>
struct Message : detail::Declaration<T, Name, Signature> {
  static constexpr bool kIsOfClass = false;
};

template <class T, FixedString Name, class Signature>
struct ClassMessage;

/// Sends a message to an object.
template <class T, FixedString Name, class R, class... A>
inline R send(std::type_identity_t<T>* receiver, Message<T, Name, R(A...)>,
              std::type_identity_t<A>... arguments) {
  OBJC_USES("message - " + kClassName<T> + " " + Name + " " + kMethodEncoding<R, A...>);
  // The messenger zeroes registers for a nil receiver, but not a structure in memory.
  if constexpr (std::is_class_v<R>) {
    if (receiver == nullptr) return R{};
  }
  return detail::call<R, A...>(detail::messenger<R>(), receiver, Selector<Name>::get(),
                               arguments...);
}

template <class T, FixedString Name, class R, class... A, class... Given>
inline R send(std::type_identity_t<T>* receiver, Message<T, Name, R(A..., ...)> message,
              Given... arguments) {
  OBJC_USES("message - " + kClassName<T> + " " + Name + " " + kMethodEncoding<R, A...>);
  return message.callVariadic(receiver, arguments...);
}

/// Sends a message to a class that is T's or derives from it.
template <class T, FixedString Name, class R, class... A>
inline R send(::Class receiver, ClassMessage<T, Name, R(A...)>,
              std::type_identity_t<A>... arguments) {
  OBJC_USES("message + " + kClassName<T> + " " + Name + " " + kMethodEncoding<R, A...>);
  if constexpr (std::is_class_v<R>) {
    if (receiver == nullptr) return R{};
  }
  return detail::call<R, A...>(detail::messenger<R>(), receiver, Selector<Name>::get(),
                               arguments...);
}

template <class T, FixedString Name, class R, class... A, class... Given>
inline R send(::Class receiver, ClassMessage<T, Name, R(A..., ...)> message, Given... arguments) {
  OBJC_USES("message + " + kClassName<T> + " " + Name + " " + kMethodEncoding<R, A...>);
  return message.callVariadic(receiver, arguments...);
}

/// A message to the class itself that T mirrors. Call it to send it: UIColor::whiteColor(). In a
/// process without the class it returns zero.
template <class T, FixedString Name, class R, class... A>
struct ClassMessage<T, Name, R(A...)> : detail::Declaration<T, Name, R(A...)> {
  static constexpr bool kIsOfClass = true;

  R operator()(A... arguments) const { return send(classOf<T>(), *this, arguments...); }
};

template <class T, FixedString Name, class R, class... A>
struct ClassMessage<T, Name, R(A..., ...)> : detail::Declaration<T, Name, R(A..., ...)> {
  static constexpr bool kIsOfClass = true;

  template <class... Given>
  R operator()(Given... arguments) const {
    OBJC_USES("message + " + kClassName<T> + " " + Name + " " + kMethodEncoding<R, A...>);
    return this->callVariadic(classOf<T>(), arguments...);
  }
};

/// Sends a message whose selector is known only at run time.
template <class R, class... A>
inline R perform(const void* receiver, SEL selector, A... arguments) {
  if constexpr (std::is_class_v<R>) {
    if (receiver == nullptr) return R{};
  }
  return detail::call<R, A...>(detail::messenger<R>(), receiver, selector, arguments...);
}

/// The base of the view of the class that T mirrors: the superclass's view, and the forms of
/// declarations.
template <class T, class Super>
struct View : Super {
  template <FixedString Name, class Signature>
  using Message = objc::Message<T, Name, Signature>;
  template <FixedString Name, class Signature>
  using ClassMessage = objc::ClassMessage<T, Name, Signature>;
};

}  // namespace objc

using objc::send;
