// The lock that every object has: made when first taken, freed when no thread holds it or waits.
#include <atomic>
#include <mutex>
#include <thread>
#include <unordered_map>

#include "objc/runtime.h"

namespace {

struct ObjectLock {
  std::recursive_mutex mutex;
  int users = 0;                       ///< the threads that hold it or wait for it
  std::atomic<std::thread::id> owner;  ///< the thread that holds it; none if it is free
  int depth = 0;                       ///< how often it is held; only the owner uses this
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
  lock->owner = std::this_thread::get_id();
  ++lock->depth;
  return kSuccess;
}

int objc_sync_exit(const void* object) {
  if (object == nullptr) return kSuccess;
  const std::lock_guard guard(locks().mutex);
  auto found = locks().byObject.find(object);
  if (found == locks().byObject.end()) return kNotOwner;
  ObjectLock& lock = found->second;
  if (lock.owner != std::this_thread::get_id()) return kNotOwner;
  if (--lock.depth == 0) lock.owner = std::thread::id();
  lock.mutex.unlock();
  if (--lock.users == 0) locks().byObject.erase(found);
  return kSuccess;
}
}
