// Instance variables by name or by description: reading, writing, and copying whole instances.
#include <cstring>

#include "internal.h"
#include "objc/object.h"
#include "runtime/send.h"

extern "C" {
HOST_EXPORT void objc_storeStrong(id* place, id object);
HOST_EXPORT id objc_storeWeak(id* place, id object);
HOST_EXPORT id objc_loadWeak(id* place);
HOST_EXPORT void objc_copyWeak(id* to, id* from);
}

namespace host::runtime {

namespace {

enum class Ownership { strong, weak, none };

id* variablePlace(const void* object, std::ptrdiff_t offset) {
  return reinterpret_cast<id*>(static_cast<char*>(const_cast<void*>(object)) + offset);
}

/// Whether a layout names the word. A layout is a row of bytes that ends with zero: words to pass
/// over in the upper half, words that it names in the lower one.
bool isInLayout(const std::uint8_t* layout, std::size_t word) {
  if (layout == nullptr) return false;
  for (std::size_t at = 0; *layout != 0; ++layout) {
    at += *layout >> 4;
    const std::size_t end = at + (*layout & 0xf);
    if (word >= at && word < end) return true;
    at = end;
  }
  return false;
}

/// What the compiler of the class did with the variable at the offset. A class that was not
/// compiled with ARC keeps no layouts.
Ownership ownershipIn(Class cls, std::ptrdiff_t offset) {
  for (; cls != nullptr; cls = cls->superclass) {
    const ClassRw& data = *rw(cls);
    const auto at = static_cast<std::size_t>(offset);
    if (at < data.instanceStart) continue;
    // A layout begins with the word that the first variable is in.
    const std::size_t word = at / sizeof(void*) - data.instanceStart / sizeof(void*);
    if (isInLayout(data.ivarLayout, word)) return Ownership::strong;
    if (isInLayout(data.weakIvarLayout, word)) return Ownership::weak;
    return Ownership::none;
  }
  return Ownership::none;
}

void setVariable(id object, const objc_ivar* ivar, id value, Ownership otherwise) {
  if (object == nullptr || ivar == nullptr) return;
  id* place = variablePlace(object, ivar->offset);
  Ownership ownership = ownershipIn(object->isa, ivar->offset);
  if (ownership == Ownership::none) ownership = otherwise;
  if (ownership == Ownership::strong) objc_storeStrong(place, value);
  else if (ownership == Ownership::weak) objc_storeWeak(place, value);
  else *place = value;
}

/// Gives a copy references of its own.
void retainVariables(id copy, id original, Class cls) {
  for (; cls != nullptr; cls = cls->superclass) {
    for (const objc_ivar* ivar : rw(cls)->ivars) {
      id* place = variablePlace(copy, ivar->offset);
      const Ownership ownership = ownershipIn(cls, ivar->offset);
      if (ownership == Ownership::strong) objc_retain(*place);
      if (ownership == Ownership::weak) objc_copyWeak(place, variablePlace(original, ivar->offset));
    }
  }
}

}  // namespace

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

HOST_EXPORT id object_getIvar(id object, objc_ivar* ivar) {
  if (object == nullptr || ivar == nullptr) return nullptr;
  id* place = variablePlace(object, ivar->offset);
  return ownershipIn(object->isa, ivar->offset) == Ownership::weak ? objc_loadWeak(place) : *place;
}
HOST_EXPORT void object_setIvar(id object, objc_ivar* ivar, id value) {
  setVariable(object, ivar, value, Ownership::none);
}
HOST_EXPORT void object_setIvarWithStrongDefault(id object, objc_ivar* ivar, id value) {
  setVariable(object, ivar, value, Ownership::strong);
}

/// Stores the variable's word, and returns its description, or nil.
HOST_EXPORT objc_ivar* object_getInstanceVariable(id object, const char* name, void** value) {
  objc_ivar* ivar = class_getInstanceVariable(object_getClass(object), name);
  if (value != nullptr) *value = object_getIvar(object, ivar);
  return ivar;
}
HOST_EXPORT objc_ivar* object_setInstanceVariable(id object, const char* name, void* value) {
  objc_ivar* ivar = class_getInstanceVariable(object_getClass(object), name);
  object_setIvar(object, ivar, static_cast<id>(value));
  return ivar;
}
HOST_EXPORT objc_ivar* object_setInstanceVariableWithStrongDefault(id object, const char* name,
                                                                   void* value) {
  objc_ivar* ivar = class_getInstanceVariable(object_getClass(object), name);
  object_setIvarWithStrongDefault(object, ivar, static_cast<id>(value));
  return ivar;
}

/// A copy with references of its own, as far as the classes' layouts tell. The size is that of
/// everything after the start of the object, at least the class's own.
HOST_EXPORT id object_copy(id object, std::size_t size) {
  if (object == nullptr) return nullptr;
  Class cls = object->isa;
  const std::size_t own = class_getInstanceSize(cls);
  const std::size_t extra = size > own ? size - own : 0;
  id copy = class_createInstance(cls, extra);
  std::memcpy(reinterpret_cast<char*>(copy) + sizeof(Class),
              reinterpret_cast<char*>(object) + sizeof(Class), own + extra - sizeof(Class));
  retainVariables(copy, object, cls);
  return copy;
}
}
