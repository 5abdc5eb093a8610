// The unnamed arguments of methods that take a list of objects.
#pragma once

#include <cstdarg>

struct NSObject;

namespace host {

/// Calls `each` with the first object, and with those after it up to a nil.
template <class Each>
void forEachArgument(NSObject* first, std::va_list rest, Each each) {
  for (NSObject* object = first; object != nullptr; object = va_arg(rest, NSObject*)) each(object);
}

}  // namespace host
