// Weak references: which places lead to an object, so that they become nil when it is freed.
#include <algorithm>
#include <cstdlib>

#include "Foundation/log.h"
#include "internal.h"
#include "objc/object.h"
#include "runtime/send.h"

namespace host::runtime {

namespace {

struct WeakTable {
  std::recursive_mutex mutex;
  std::unordered_map<const void*, std::vector<id*>> places;  ///< by object
};

WeakTable& weakTable() {
  static auto* table = new WeakTable;
  return *table;
}

/// An object whose class counts by itself is asked; NSObject's method answers for the others.
bool mayBeReferenced(id object) {
  if (!hasHeader(object)) return true;
  if (countsItself(object->isa)) return send<bool>(object, "allowsWeakReference"_sel);
  return !isBeingFreed(object);
}

bool keepAlive(id object) {
  if (!hasHeader(object)) return true;
  if (countsItself(object->isa)) return send<bool>(object, "retainWeakReference"_sel);
  return retainFromWeak(object);
}

void forget(id object, id* place) {
  auto& places = weakTable().places;
  const auto found = places.find(object);
  if (found == places.end()) return;
  std::erase(found->second, place);
  if (found->second.empty()) places.erase(found);
}

[[noreturn]] void dieOfWeakReference(id object) {
  host::log(host::LogLevel::error, std::string("Cannot form weak reference to instance of class ") +
                                       class_getName(object->isa) + ": it is being deallocated");
  std::abort();
}

/// The table's mutex is held.
id remember(id* place, id object) {
  *place = object;
  if (object == nullptr || !hasHeader(object)) return object;
  weakTable().places[object].push_back(place);
  header(object)->isWeaklyReferenced.store(1, std::memory_order_relaxed);
  return object;
}

}  // namespace

bool retainFromWeak(id object) {
  std::atomic<std::int64_t>& references = header(object)->references;
  std::int64_t count = references.load(std::memory_order_relaxed);
  while (count > 0) {
    if (references.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) return true;
  }
  return count != kDeallocating && count != 0;
}

bool isBeingFreed(id object) {
  const std::int64_t count = header(object)->references.load(std::memory_order_relaxed);
  return count == kDeallocating || count == 0;
}

void clearWeakReferences(id object) {
  const std::scoped_lock guard(weakTable().mutex);
  const auto places = weakTable().places.extract(object);
  if (places.empty()) return;
  for (id* place : places.mapped())
    if (*place == object) *place = nullptr;
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

/// The object with a reference for the caller, or nil.
HOST_EXPORT id objc_loadWeakRetained(id* place) {
  const std::scoped_lock guard(weakTable().mutex);
  id object = *place;
  return object != nullptr && keepAlive(object) ? object : nullptr;
}

HOST_EXPORT id objc_loadWeak(id* place) { return objc_autorelease(objc_loadWeakRetained(place)); }

HOST_EXPORT id objc_storeWeakOrNil(id* place, id object) {
  const std::scoped_lock guard(weakTable().mutex);
  if (*place != nullptr) forget(*place, place);
  const bool isAllowed = object != nullptr && mayBeReferenced(object);
  return remember(place, isAllowed ? object : nullptr);
}

/// An object that is being freed cannot be stored: the process ends, as on phones.
HOST_EXPORT id objc_storeWeak(id* place, id object) {
  id stored = objc_storeWeakOrNil(place, object);
  if (stored != object) dieOfWeakReference(object);
  return stored;
}

HOST_EXPORT id objc_initWeak(id* place, id object) {
  *place = nullptr;
  return objc_storeWeak(place, object);
}

HOST_EXPORT id objc_initWeakOrNil(id* place, id object) {
  *place = nullptr;
  return objc_storeWeakOrNil(place, object);
}

HOST_EXPORT void objc_destroyWeak(id* place) {
  const std::scoped_lock guard(weakTable().mutex);
  if (*place != nullptr) forget(*place, place);
}

HOST_EXPORT void objc_copyWeak(id* to, id* from) {
  id object = objc_loadWeakRetained(from);
  objc_initWeakOrNil(to, object);
  objc_release(object);
}

HOST_EXPORT void objc_moveWeak(id* to, id* from) {
  objc_copyWeak(to, from);
  objc_destroyWeak(from);
  *from = nullptr;
}
}
