// What compiled code calls to count references: ARC's functions and the shortcuts for alloc and
// others.
#include "internal.h"
#include "objc/object.h"
#include "runtime/send.h"

extern "C" {

HOST_EXPORT id objc_retainAutorelease(id object) { return objc_autorelease(objc_retain(object)); }

HOST_EXPORT id objc_retainBlock(id block) { return static_cast<id>(_Block_copy(block)); }

HOST_EXPORT void objc_storeStrong(id* place, id object) {
  id old = *place;
  if (old == object) return;
  objc_retain(object);
  *place = object;
  objc_release(old);
}

// Bridging casts of older compilers.
HOST_EXPORT id objc_retainedObject(const void* pointer) {
  return static_cast<id>(const_cast<void*>(pointer));
}
HOST_EXPORT id objc_unretainedObject(const void* pointer) {
  return static_cast<id>(const_cast<void*>(pointer));
}
HOST_EXPORT const void* objc_unretainedPointer(id object) { return object; }

// A class's own +alloc is called, whatever the function.

HOST_EXPORT id objc_alloc(Class cls) {
  return cls == nullptr ? nullptr : send<id>(cls, "alloc"_sel);
}
HOST_EXPORT id objc_allocWithZone(Class cls) {
  return cls == nullptr ? nullptr
                        : send<id>(cls, "allocWithZone:"_sel, static_cast<void*>(nullptr));
}
HOST_EXPORT id objc_alloc_init(Class cls) {
  return cls == nullptr ? nullptr : send<id>(objc_alloc(cls), "init"_sel);
}
HOST_EXPORT id objc_opt_new(Class cls) {
  return cls == nullptr ? nullptr : send<id>(cls, "new"_sel);
}
HOST_EXPORT id objc_opt_self(id object) {
  return object == nullptr ? nullptr : send<id>(object, "self"_sel);
}
HOST_EXPORT Class objc_opt_class(id object) {
  return object == nullptr ? nullptr : send<Class>(object, "class"_sel);
}
HOST_EXPORT bool objc_opt_isKindOfClass(id object, Class cls) {
  return object != nullptr && send<bool>(object, "isKindOfClass:"_sel, cls);
}
HOST_EXPORT bool objc_opt_respondsToSelector(id object, SEL selector) {
  return object != nullptr && send<bool>(object, "respondsToSelector:"_sel, selector);
}

// NSObject's own methods, as functions.

HOST_EXPORT id _objc_rootRetain(id object) {
  if (!class_isMetaClass(object->isa)) host::runtime::addReference(object);
  return object;
}
HOST_EXPORT void _objc_rootRelease(id object) {
  if (!class_isMetaClass(object->isa)) host::runtime::dropReference(object);
}
HOST_EXPORT id _objc_rootAutorelease(id object) {
  if (!class_isMetaClass(object->isa)) host::runtime::releaseWithPool(object);
  return object;
}
HOST_EXPORT bool _objc_rootTryRetain(id object) {
  return class_isMetaClass(object->isa) || host::runtime::retainFromWeak(object);
}
HOST_EXPORT bool _objc_rootIsDeallocating(id object) {
  return !class_isMetaClass(object->isa) && host::runtime::isBeingFreed(object);
}
HOST_EXPORT std::size_t _objc_rootRetainCount(id object) {
  return send<std::size_t>(object, "retainCount"_sel);
}
HOST_EXPORT void* _objc_autoreleasePoolPush() { return objc_autoreleasePoolPush(); }
HOST_EXPORT void _objc_autoreleasePoolPop(void* pool) { objc_autoreleasePoolPop(pool); }
HOST_EXPORT id _objc_rootAlloc(Class cls) { return class_createInstance(cls, 0); }
HOST_EXPORT id _objc_rootAllocWithZone(Class cls, void*) { return class_createInstance(cls, 0); }
HOST_EXPORT id _objc_rootInit(id object) { return object; }
HOST_EXPORT void _objc_rootDealloc(id object) { object_dispose(object); }
HOST_EXPORT std::size_t _objc_rootHash(id object) { return reinterpret_cast<std::size_t>(object); }
}
