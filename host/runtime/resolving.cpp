// Methods that a class adds when it is first asked for them.
#include <algorithm>

#include "internal.h"
#include "objc/object.h"
#include "objc/own_class.h"

OBJC_DECLARE_CLASS_SYMBOLS_(NSObject, )

namespace host::runtime {

namespace {

using Asked = std::pair<Class, SEL>;

/// What this thread's classes are just being asked for: a resolver may ask for it itself.
thread_local std::vector<Asked> asking;

objc_method* findLocked(Class cls, SEL selector) {
  std::scoped_lock guard(lock());
  return findMethod(cls, selector);
}

}  // namespace

IMP overridden(Class cls, SEL selector) {
  std::scoped_lock guard(lock());
  const objc_method* method = findMethod(cls, selector);
  if (method == nullptr || method->owner == &objc_class_NSObject ||
      method->owner == &objc_metaclass_NSObject)
    return nullptr;
  return method->implementation.load();
}

objc_method* findOrResolveMethod(Class cls, SEL selector) {
  if (objc_method* method = findLocked(cls, selector)) return method;
  static SEL ofInstances = sel_registerName("resolveInstanceMethod:");
  static SEL ofClass = sel_registerName("resolveClassMethod:");
  const bool isMeta = class_isMetaClass(cls);
  Class asked = isMeta ? rw(cls)->instanceClass : cls;
  SEL resolver = isMeta ? ofClass : ofInstances;
  IMP resolve = asked == nullptr ? nullptr : overridden(asked->isa, resolver);
  const Asked question(cls, selector);
  if (resolve == nullptr || std::ranges::find(asking, question) != asking.end()) return nullptr;
  struct Finally {
    ~Finally() { asking.pop_back(); }
  };
  asking.push_back(question);
  const Finally finally;
  initializeClass(asked);
  reinterpret_cast<bool (*)(Class, SEL, SEL)>(resolve)(asked, resolver, selector);
  return findLocked(cls, selector);
}

}  // namespace host::runtime
