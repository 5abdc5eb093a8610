// Type encodings, derived from C++ types as the platform's compiler derives them.
#pragma once

#include <type_traits>

#include "objc/class_name.h"
#include "objc/fixed_string.h"

namespace objc {

/// The name and the member types of a structure that crosses a message; see OBJC_STRUCT.
template <class T>
inline constexpr auto kStructEncoding = nullptr;

/// A structure of the platform's of which only the name is known; see OBJC_OPAQUE.
template <class T>
inline constexpr bool kIsOpaque = false;

template <class T>
struct BlockLayout;

namespace detail {

template <class T>
inline constexpr bool kIsBlock = false;
template <class S>
inline constexpr bool kIsBlock<BlockLayout<S>> = true;

template <class T>
consteval auto encodeScalar() {
  // The platform's BOOL is a signed char on 32 bits.
#if defined(__arm__)
  if constexpr (std::is_same_v<T, bool>) return FixedString("c");
#else
  if constexpr (std::is_same_v<T, bool>) return FixedString("B");
#endif
  else if constexpr (std::is_same_v<T, char> || std::is_same_v<T, signed char>)
    return FixedString("c");
  else if constexpr (std::is_same_v<T, unsigned char>) return FixedString("C");
  else if constexpr (std::is_same_v<T, short>) return FixedString("s");
  else if constexpr (std::is_same_v<T, unsigned short>) return FixedString("S");
  else if constexpr (std::is_same_v<T, int>) return FixedString("i");
  else if constexpr (std::is_same_v<T, unsigned int>) return FixedString("I");
  else if constexpr (std::is_same_v<T, float>) return FixedString("f");
  else if constexpr (std::is_same_v<T, double>) return FixedString("d");
  else if constexpr (std::is_integral_v<T> && sizeof(T) == 8) {
    return std::is_signed_v<T> ? FixedString("q") : FixedString("Q");
  } else {
    static_assert(std::is_integral_v<T>, "no encoding for this type");
    return std::is_signed_v<T> ? FixedString("l") : FixedString("L");
  }
}

/// The types that are pointers in the platform's language: objects, classes, selectors, blocks.
template <class T>
consteval bool isHandleTarget() {
  if constexpr (std::is_same_v<T, objc_selector> || std::is_same_v<T, objc_class>) return true;
  else if constexpr (kIsOpaque<T>) return false;
  else if constexpr (std::is_class_v<T>) return kIsBlock<T> || std::is_base_of_v<NSObject, T>;
  else return false;
}

/// Whether the target at the end of a chain of pointers is const.
template <class T>
consteval bool endsInConst() {
  using Target = std::remove_cv_t<std::remove_pointer_t<T>>;
  if constexpr (std::is_pointer_v<T> && !isHandleTarget<Target>())
    return endsInConst<std::remove_pointer_t<T>>();
  else return std::is_const_v<T>;
}

template <class T, bool Outermost>
consteval auto encodePointer();

template <class T, bool Outermost = true>
consteval auto encodeValue() {
  if constexpr (std::is_void_v<T>) return FixedString("v");
  else if constexpr (std::is_pointer_v<T>)
    return encodePointer<std::remove_pointer_t<T>, Outermost>();
  else if constexpr (std::is_enum_v<T>) return encodeScalar<std::underlying_type_t<T>>();
  else if constexpr (std::is_class_v<T>) return kStructEncoding<T>;
  else return encodeScalar<T>();
}

/// A pointer to data that is not an object. Only the outermost structure's members are listed.
template <class T, bool Outermost>
consteval auto encodeDataPointer() {
  if constexpr (std::is_same_v<T, char>) return FixedString("*");
  else if constexpr (std::is_void_v<T>) return FixedString("^v");
  else if constexpr (kIsOpaque<T> && Outermost) return "^{" + kClassName<T> + "=}";
  else if constexpr (!std::is_class_v<T>) return "^" + encodeValue<T, false>();
  else if constexpr (Outermost &&
                     !std::is_same_v<decltype(kStructEncoding<T>), const std::nullptr_t>)
    return "^" + kStructEncoding<T>;
  else return "^{" + kClassName<T> + "}";
}

template <class T, bool Outermost>
consteval auto encodePointer() {
  using Bare = std::remove_cv_t<T>;
  if constexpr (std::is_same_v<Bare, objc_selector>) return FixedString(":");
  else if constexpr (std::is_same_v<Bare, objc_class>) return FixedString("#");
  else if constexpr (kIsBlock<Bare>) return FixedString("@?");
  else if constexpr (std::is_function_v<T>) return FixedString("^?");
  else if constexpr (isHandleTarget<Bare>()) return FixedString("@");
  else if constexpr (Outermost && endsInConst<T>()) return "r" + encodeDataPointer<Bare, true>();
  else return encodeDataPointer<Bare, Outermost>();
}

}  // namespace detail

/// The encoding of one type: an object "@", a class "#", a rectangle "{CGRect={CGPoint=dd}...}".
template <class T>
inline constexpr auto kEncoding = detail::encodeValue<T>();

namespace detail {

template <class... T>
consteval auto encodeAll() {
  return (FixedString("") + ... + kEncoding<T>);
}

}  // namespace detail

/// The encoding of a method: result, receiver, selector, arguments, without frame offsets.
template <class R, class... A>
inline constexpr auto kMethodEncoding = kEncoding<R> + "@:" + detail::encodeAll<A...>();

/// The encoding of a block's call: result, the block itself, arguments.
template <class R, class... A>
inline constexpr auto kBlockEncoding = kEncoding<R> + "@?" + detail::encodeAll<A...>();

namespace detail {

/// Whether a structure has members, and all of them are floating point.
template <class T>
consteval bool isOfFractions() {
  constexpr auto text = kEncoding<T>;
  std::size_t members = 0;
  bool inName = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text.text[i];
    if (c == '{') inName = true;
    else if (c == '=') inName = false;
    else if (c == '}' || inName) continue;
    else if (c == 'f' || c == 'd') ++members;
    else return false;
  }
  return members > 0;
}

}  // namespace detail
}  // namespace objc

/// Declares a structure that is used only through pointers, and is not an object.
#define OBJC_OPAQUE(Name) \
  template <>             \
  inline constexpr bool objc::kIsOpaque<Name> = true

/// Declares a structure's name and the types of its members, in order. Use it outside all
/// namespaces.
#define OBJC_STRUCT(Name, ...)                        \
  template <>                                         \
  inline constexpr auto objc::kStructEncoding<Name> = \
      "{" + objc::FixedString(#Name) + "=" + objc::detail::encodeAll<__VA_ARGS__>() + "}"
