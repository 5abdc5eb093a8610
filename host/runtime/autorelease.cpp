// Autorelease pools: one stack of objects per thread, with marks where pools begin.
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

}  // namespace

void host::runtime::releaseWithPool(id object) { stack.push(object); }

extern "C" {

id objc_autorelease(id object) {
  if (object == nullptr) return nullptr;
  if (host::runtime::countsItself(object->isa)) return send<id>(object, "autorelease"_sel);
  stack.push(object);
  return object;
}

/// A token is one more than the depth at which the pool begins, so that none is nil.
void* objc_autoreleasePoolPush() { return reinterpret_cast<void*>(stack.depth() + 1); }

void objc_autoreleasePoolPop(void* pool) { stack.popTo(reinterpret_cast<std::size_t>(pool) - 1); }
}
