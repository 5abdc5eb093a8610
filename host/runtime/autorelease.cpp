// Autorelease pools: one stack of objects per thread, with marks where pools begin.
#include <utility>
#include <vector>

#include "internal.h"
#include "objc/object.h"
#include "runtime/send.h"

namespace {

class Stack {
 public:
  Stack() = default;
  Stack(const Stack&) = delete;
  Stack& operator=(const Stack&) = delete;
  /// Objects that were autoreleased outside all pools are released when their thread ends.
  ~Stack() { popTo(0); }

  void push(id object) { objects_.push_back(object); }
  /// Gives up the object that was pushed last, if it is this one.
  bool take(id object) {
    if (objects_.empty() || objects_.back() != object) return false;
    objects_.pop_back();
    return true;
  }
  std::size_t depth() const { return objects_.size(); }
  void popTo(std::size_t depth) {
    while (objects_.size() > depth) {
      id object = objects_.back();
      objects_.pop_back();
      objc_release(object);
    }
  }

 private:
  std::vector<id> objects_;
};

thread_local Stack stack;

/// Where this thread's last autoreleased result was returned to.
thread_local const char* returnedTo = nullptr;

/// A caller that keeps a result calls right where it was returned to. Then it gets the pool's
/// reference, so that the object goes when the caller lets it go, and not with the pool.
bool takeResult(id object, void* calledFrom) {
  constexpr std::ptrdiff_t kLongest = 16;  // bytes: moving the result, and the call
  const std::ptrdiff_t distance =
      static_cast<const char*>(calledFrom) - std::exchange(returnedTo, nullptr);
  return object != nullptr && distance > 0 && distance <= kLongest && stack.take(object);
}

id autoreleaseResult(id object, void* calledFrom) {
  objc_autorelease(object);
  returnedTo = static_cast<const char*>(calledFrom);
  return object;
}

}  // namespace

void host::runtime::releaseWithPool(id object) { stack.push(object); }

extern "C" {

id objc_autorelease(id object) {
  if (object == nullptr) return nullptr;
  if (host::runtime::countsItself(object->isa)) return send<id>(object, "autorelease"_sel);
  stack.push(object);
  return object;
}

// These are called last in a function, so they return to its caller.

HOST_EXPORT id objc_autoreleaseReturnValue(id object) {
  return autoreleaseResult(object, __builtin_return_address(0));
}
HOST_EXPORT id objc_retainAutoreleaseReturnValue(id object) {
  return autoreleaseResult(objc_retain(object), __builtin_return_address(0));
}

HOST_EXPORT id objc_retainAutoreleasedReturnValue(id object) {
  return takeResult(object, __builtin_return_address(0)) ? object : objc_retain(object);
}
HOST_EXPORT id objc_claimAutoreleasedReturnValue(id object) {
  return takeResult(object, __builtin_return_address(0)) ? object : objc_retain(object);
}
/// For a result that the caller does not keep.
HOST_EXPORT id objc_unsafeClaimAutoreleasedReturnValue(id object) {
  if (takeResult(object, __builtin_return_address(0))) objc_release(object);
  return object;
}

/// A token is one more than the depth at which the pool begins, so that none is nil.
void* objc_autoreleasePoolPush() { return reinterpret_cast<void*>(stack.depth() + 1); }

void objc_autoreleasePoolPop(void* pool) { stack.popTo(reinterpret_cast<std::size_t>(pool) - 1); }
}
