// The lock that every object has: made when it is first taken, gone when nobody holds or awaits it.
#include <mutex>
#include <unordered_map>

#include "objc/runtime.h"

namespace {

struct ObjectLock {
  std::recursive_mutex mutex;
  int users = 0;  ///< those who hold it and those who wait
};

struct Locks {
  std::mutex mutex;
  std::unordered_map<const void*, ObjectLock> byObject;
};

Locks& locks() {
  static auto* all = new Locks;
  return *all;
}

constexpr int kSuccess = 0;
constexpr int kNotOwner = -1;

}  // namespace

extern "C" {

int objc_sync_enter(const void* object) {
  if (object == nullptr) return kSuccess;
  ObjectLock* lock = nullptr;
  {
    const std::lock_guard guard(locks().mutex);
    lock = &locks().byObject[object];
    ++lock->users;
  }
  lock->mutex.lock();
  return kSuccess;
}

int objc_sync_exit(const void* object) {
  if (object == nullptr) return kSuccess;
  const std::lock_guard guard(locks().mutex);
  auto found = locks().byObject.find(object);
  if (found == locks().byObject.end()) return kNotOwner;
  found->second.mutex.unlock();
  if (--found->second.users == 0) locks().byObject.erase(found);
  return kSuccess;
}
}
