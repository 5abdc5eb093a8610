// What compilers call for the variables that a block captures, and for those marked __block.
#include <cstdlib>
#include <cstring>
#include <new>

#include "internal.h"
#include "objc/object.h"

namespace {

/// What is copied or disposed of, as the compiler's argument says.
enum FieldFlags : int {
  kFieldObject = 3,
  kFieldBlock = 7,
  kFieldByref = 8,
  kFieldWeak = 16,
  kFieldOfByref = 128,  ///< inside a __block variable, which does not keep what it holds
};

/// A __block variable: on the stack of its function at first, on the heap once a block is copied.
struct Byref {
  void* isa;
  Byref* forwarding;  ///< where the variable is now
  std::atomic<int> flags;
  int size;
  // These two only if the flags say so.
  void (*copy)(Byref* to, Byref* from);
  void (*dispose)(Byref* variable);
};

constexpr int kByrefHasCopyDispose = 1 << 25;
constexpr int kByrefIsOnHeap = 1 << 24;
/// References are counted in steps of two below this.
constexpr int kByrefCount = 0xfffe;

Byref* retainByref(Byref* variable) {
  Byref* now = variable->forwarding;
  if ((now->flags & kByrefIsOnHeap) != 0) {
    now->flags += 2;
    return now;
  }
  void* memory = std::calloc(1, static_cast<std::size_t>(variable->size));
  if (memory == nullptr) throw std::bad_alloc();
  auto* copy = static_cast<Byref*>(memory);
  const int flags = variable->flags;
  // One reference for the block, and one for the function whose variable it is.
  copy->flags = (flags & ~kByrefCount) | kByrefIsOnHeap | 4;
  copy->forwarding = copy;
  copy->size = variable->size;
  copy->isa = variable->isa;
  const std::size_t head = offsetof(Byref, copy);
  if ((flags & kByrefHasCopyDispose) != 0) {
    std::memcpy(reinterpret_cast<char*>(copy) + head, reinterpret_cast<char*>(variable) + head,
                sizeof(Byref) - head);
    variable->forwarding = copy;
    copy->copy(copy, variable);
  } else {
    variable->forwarding = copy;
    std::memcpy(reinterpret_cast<char*>(copy) + head, reinterpret_cast<char*>(variable) + head,
                static_cast<std::size_t>(variable->size) - head);
  }
  return copy;
}

void releaseByref(Byref* variable) {
  variable = variable->forwarding;
  if ((variable->flags & kByrefIsOnHeap) == 0) return;
  const int left = variable->flags.fetch_sub(2) - 2;
  if ((left & kByrefCount) != 0) return;
  if ((variable->flags & kByrefHasCopyDispose) != 0) variable->dispose(variable);
  std::free(variable);
}

}  // namespace

extern "C" {

HOST_EXPORT void _Block_object_assign(void* place, const void* object, int flags) {
  void*& to = *static_cast<void**>(place);
  void* from = const_cast<void*>(object);
  if ((flags & kFieldOfByref) != 0) to = from;
  else if ((flags & kFieldByref) != 0) to = retainByref(static_cast<Byref*>(from));
  else if ((flags & kFieldBlock) == kFieldBlock) to = _Block_copy(object);
  else if ((flags & kFieldObject) == kFieldObject) to = objc_retain(static_cast<id>(from));
  else to = from;
}

HOST_EXPORT void _Block_object_dispose(const void* object, int flags) {
  void* from = const_cast<void*>(object);
  if ((flags & kFieldOfByref) != 0) return;
  if ((flags & kFieldByref) != 0) releaseByref(static_cast<Byref*>(from));
  else if ((flags & kFieldBlock) == kFieldBlock) _Block_release(object);
  else if ((flags & kFieldObject) == kFieldObject) objc_release(static_cast<id>(from));
}
}
