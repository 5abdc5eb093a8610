// Instance variables by name, for code that inspects any object.
#pragma once

#include "objc/object.h"

namespace objc {

/// The object in the receiver's instance variable of that name; the receiver's class must have it.
template <class T>
T* instanceVariable(NSObject* object, const char* name) {
  objc_ivar* ivar = class_getInstanceVariable(object_getClass(object), name);
  return *reinterpret_cast<T**>(reinterpret_cast<char*>(object) + ivar_getOffset(ivar));
}

}  // namespace objc
