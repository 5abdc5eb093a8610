// The empty array and the empty dictionary that compilers name for @[] and @{}.
#include "objc/own_class.h"
#include "runtime/internal.h"

OBJC_DECLARE_CLASS_SYMBOLS_(NSArray, )
OBJC_DECLARE_CLASS_SYMBOLS_(NSDictionary, )

extern "C" {
HOST_EXPORT extern id __NSArray0__;
HOST_EXPORT extern id __NSDictionary0__;
}

namespace {

id immortal(Class cls) {
  id made = class_createInstance(cls, 0);
  host::runtime::header(made)->references = -1;
  return made;
}

/// After the library's classes are registered, and before those that use it.
[[gnu::constructor(102)]] void makeEmptyCollections() {
  __NSArray0__ = immortal(&objc_class_NSArray);
  __NSDictionary0__ = immortal(&objc_class_NSDictionary);
}

}  // namespace

id __NSArray0__ = nullptr;
id __NSDictionary0__ = nullptr;
