// Selectors as types: "setTintColor:"_sel carries its name, so a send can check its arguments.
#pragma once

#include "objc/fixed_string.h"
#include "objc/runtime.h"

namespace objc {

namespace detail {

/// Kept out of line, since most callers find the selector in place.
[[gnu::noinline, gnu::cold]] inline SEL registerSelector(const char* name, SEL* place) {
  SEL selector = sel_registerName(name);
  __atomic_store_n(place, selector, __ATOMIC_RELAXED);
  return selector;
}

}  // namespace detail

template <FixedString Name>
struct Selector {
  static constexpr std::size_t kArguments = Name.count(':');

  /// The registered selector. Looked up once per name. Two threads may look it up at once, since
  /// both find the same pointer.
  static SEL get() {
    static constinit SEL registered = nullptr;
    SEL selector = __atomic_load_n(&registered, __ATOMIC_RELAXED);
    if (selector == nullptr) return detail::registerSelector(kStored<Name>.text, &registered);
    return selector;
  }

  operator SEL() const { return get(); }
};

inline namespace literals {
template <FixedString Name>
consteval Selector<Name> operator""_sel() {
  return {};
}
}  // namespace literals

}  // namespace objc
