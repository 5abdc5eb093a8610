// The platform class that a C++ struct mirrors, by the struct's own name, without a table.
#pragma once

#include "objc/fixed_string.h"
#include "objc/runtime.h"
#include "objc/uses.h"

namespace objc {

namespace detail {

template <class T>
constexpr auto prettyFunction() {
  return FixedString(__PRETTY_FUNCTION__);
}

/// Cuts the type's last name component out of "... [with T = host::UIView]" or "... [T = UIView]".
template <class T>
consteval auto nameBounds() {
  struct Bounds {
    std::size_t begin, end;
  };
  constexpr auto whole = prettyFunction<T>();
  std::size_t end = whole.size() - 1;
  std::size_t begin = end;
  auto inName = [](char c) { return c != ' ' && c != ':' && c != '='; };
  while (begin > 0 && inName(whole.text[begin - 1])) --begin;
  return Bounds{begin, end};
}

template <class T>
consteval auto bareName() {
  constexpr auto bounds = nameBounds<T>();
  constexpr auto whole = prettyFunction<T>();
  FixedString<bounds.end - bounds.begin + 1> name;
  for (std::size_t i = bounds.begin; i < bounds.end; ++i)
    name.text[i - bounds.begin] = whole.text[i];
  return name;
}

}  // namespace detail

/// The unqualified name of T: the platform's name for the class that T mirrors.
template <class T>
inline constexpr auto kClassName = detail::bareName<T>();

namespace detail {

/// Kept out of line, since most callers find the class in place.
[[gnu::noinline, gnu::cold]] inline Class findClass(const char* name, Class* place) {
  Class cls = objc_getClass(name);
  __atomic_store_n(place, cls, __ATOMIC_RELAXED);
  return cls;
}

}  // namespace detail

/// The class of that name, or nil. Looked up on first use, and remembered once found.
template <FixedString Name>
inline Class classNamed() {
  static constinit Class found = nullptr;
  Class cls = __atomic_load_n(&found, __ATOMIC_RELAXED);
  if (cls == nullptr) return detail::findClass(kStored<Name>.text, &found);
  return cls;
}

/// How to find the class that T mirrors: by name, or for a class of ours through its own object
/// (own_class.h).
template <class T>
struct ClassOf {
  static Class get() {
    OBJC_USES("class " + kClassName<T>);
    return classNamed<kClassName<T>>();
  }
};

/// The class that T mirrors, or nil in a process without it.
template <class T>
inline Class classOf() {
  return ClassOf<T>::get();
}

}  // namespace objc
