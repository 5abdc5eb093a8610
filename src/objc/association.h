// Associated objects, typed.
#pragma once

#include "objc/object.h"

namespace objc {

/// The object stored under the key, or nil.
template <class T>
T* associated(NSObject* owner, SEL key) {
  return static_cast<T*>(objc_getAssociatedObject(owner, key));
}

inline void associate(NSObject* owner, SEL key, NSObject* value, AssociationPolicy policy) {
  objc_setAssociatedObject(owner, key, value, policy);
}

}  // namespace objc
