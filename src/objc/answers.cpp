#include "objc/answers.h"

namespace objc {

bool hasMethod(Class cls, const char* name, const char* types) {
  objc_method* method = class_getInstanceMethod(cls, sel_registerName(name));
  return method != nullptr && agree(method_getTypeEncoding(method), types);
}

}  // namespace objc
