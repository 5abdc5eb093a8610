// What compilers call for properties: getters and setters that copy, retain or lock.
#include <array>
#include <cstring>
#include <utility>

#include "internal.h"
#include "objc/object.h"
#include "runtime/send.h"

namespace {

/// The locks of atomic properties, by the place of the value.
std::mutex& lockOf(const void* place) {
  static auto* locks = new std::array<std::mutex, 64>;
  return (*locks)[reinterpret_cast<std::uintptr_t>(place) / sizeof(void*) % locks->size()];
}

id* placeIn(id object, std::ptrdiff_t offset) {
  return reinterpret_cast<id*>(reinterpret_cast<char*>(object) + offset);
}

/// How a setter keeps its value, as the compiler's argument says.
enum class Copying : unsigned char { no = 0, copy = 1, mutableCopy = 2 };

void set(id object, std::ptrdiff_t offset, id value, bool isAtomic, Copying copying) {
  id* place = placeIn(object, offset);
  if (copying == Copying::copy) value = send(value, NSObject::copy);
  else if (copying == Copying::mutableCopy) value = send(value, NSObject::mutableCopy);
  else if (*place == value) return;
  else objc_retain(value);
  id old = nullptr;
  if (isAtomic) {
    const std::scoped_lock guard(lockOf(place));
    old = std::exchange(*place, value);
  } else {
    old = std::exchange(*place, value);
  }
  objc_release(old);
}

}  // namespace

extern "C" {

HOST_EXPORT id objc_getProperty(id self, SEL, std::ptrdiff_t offset, bool isAtomic) {
  if (offset == 0) return reinterpret_cast<id>(self->isa);
  id* place = placeIn(self, offset);
  if (!isAtomic) return *place;
  id value = nullptr;
  {
    const std::scoped_lock guard(lockOf(place));
    value = objc_retain(*place);
  }
  return objc_autorelease(value);
}

HOST_EXPORT void objc_setProperty(id self, SEL, std::ptrdiff_t offset, id value, bool isAtomic,
                                  unsigned char copying) {
  set(self, offset, value, isAtomic, static_cast<Copying>(copying));
}
HOST_EXPORT void objc_setProperty_atomic(id self, SEL, id value, std::ptrdiff_t offset) {
  set(self, offset, value, true, Copying::no);
}
HOST_EXPORT void objc_setProperty_nonatomic(id self, SEL, id value, std::ptrdiff_t offset) {
  set(self, offset, value, false, Copying::no);
}
HOST_EXPORT void objc_setProperty_atomic_copy(id self, SEL, id value, std::ptrdiff_t offset) {
  set(self, offset, value, true, Copying::copy);
}
HOST_EXPORT void objc_setProperty_nonatomic_copy(id self, SEL, id value, std::ptrdiff_t offset) {
  set(self, offset, value, false, Copying::copy);
}

/// A structure of a property. One of the two places is the property's, so both are locked.
HOST_EXPORT void objc_copyStruct(void* to, const void* from, std::ptrdiff_t size, bool isAtomic,
                                 bool) {
  if (!isAtomic) {
    std::memmove(to, from, static_cast<std::size_t>(size));
    return;
  }
  std::mutex& one = lockOf(to);
  std::mutex& other = lockOf(from);
  if (&one == &other) {
    const std::scoped_lock guard(one);
    std::memmove(to, from, static_cast<std::size_t>(size));
  } else {
    const std::scoped_lock guard(one, other);
    std::memmove(to, from, static_cast<std::size_t>(size));
  }
}
HOST_EXPORT void objc_copyPropertyStruct(void* to, const void* from, std::ptrdiff_t size,
                                         bool isAtomic, bool hasStrong) {
  objc_copyStruct(to, from, size, isAtomic, hasStrong);
}

/// The same for a C++ object, with the function that assigns it.
HOST_EXPORT void objc_copyCppObjectAtomic(void* to, const void* from,
                                          void (*copy)(void* to, const void* from)) {
  std::mutex& one = lockOf(to);
  std::mutex& other = lockOf(from);
  if (&one == &other) {
    const std::scoped_lock guard(one);
    copy(to, from);
  } else {
    const std::scoped_lock guard(one, other);
    copy(to, from);
  }
}
}
