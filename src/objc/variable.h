// Instance variables of platform objects, read by name.
#pragma once

#include "objc/object.h"

namespace objc {

/// An instance variable of the class that T mirrors, which holds an object that V mirrors.
template <class T, FixedString Name, class V>
struct Variable {};

namespace detail {

/// The offset of a class's variable of that name; -1 if it has none, or one that holds no object.
inline std::ptrdiff_t offsetOfObject(Class cls, const char* name) {
  objc_ivar* found = class_getInstanceVariable(cls, name);
  const char* types = found == nullptr ? nullptr : ivar_getTypeEncoding(found);
  return types != nullptr && *types == '@' ? ivar_getOffset(found) : -1;
}

}  // namespace detail

/// Whether the class has the variable, of object type.
template <class T, FixedString Name, class V>
bool hasVariable(Class cls, Variable<T, Name, V>) {
  return detail::offsetOfObject(cls, kStored<Name>.text) >= 0;
}

/// Where the variable is in the object; null if T's class has no variable of that name. Looked up
/// once.
template <class T, FixedString Name, class V>
V** find(std::type_identity_t<T>* object, Variable<T, Name, V>) {
  OBJC_USES("variable " + kClassName<T> + " " + Name + " " + kClassName<V>);
  constexpr std::ptrdiff_t kUnknown = 0;
  static constinit std::ptrdiff_t remembered = kUnknown;
  if (object == nullptr) return nullptr;
  std::ptrdiff_t offset = __atomic_load_n(&remembered, __ATOMIC_RELAXED);
  if (offset == kUnknown) {
    offset = detail::offsetOfObject(classOf<T>(), kStored<Name>.text);
    __atomic_store_n(&remembered, offset, __ATOMIC_RELAXED);
  }
  if (offset < 0) return nullptr;
  return reinterpret_cast<V**>(reinterpret_cast<char*>(object) + offset);
}

/// The object in the variable; nil if T's class has no variable of that name.
template <class T, FixedString Name, class V>
V* read(std::type_identity_t<T>* object, Variable<T, Name, V> variable) {
  V** place = find(object, variable);
  return place == nullptr ? nullptr : *place;
}

/// Puts an object into a variable that keeps it alive; nothing happens without the variable.
template <class T, FixedString Name, class V>
void store(std::type_identity_t<T>* object, Variable<T, Name, V> variable, V* value) {
  V** place = find(object, variable);
  if (place == nullptr) return;
  objc_retain(value);
  objc_release(*place);
  *place = value;
}

}  // namespace objc
