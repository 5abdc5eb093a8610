// +initialize: once for each class, superclasses first, before the first other message.
#include <condition_variable>

#include "internal.h"

namespace host::runtime {

namespace {

struct Turn {
  std::mutex mutex;
  std::condition_variable done;
};

Turn& turn() {
  static auto* one = new Turn;
  return *one;
}

void finish(ClassRw& data) {
  {
    const std::scoped_lock guard(turn().mutex);
    data.initialized = Initialized::yes;
  }
  turn().done.notify_all();
}

/// Whether it is this thread's turn to initialise the class. If another thread does, waits for it.
bool begin(ClassRw& data) {
  std::unique_lock guard(turn().mutex);
  if (data.initialized == Initialized::no) {
    data.initialized = Initialized::running;
    data.initializer = std::this_thread::get_id();
    return true;
  }
  if (data.initializer != std::this_thread::get_id())
    turn().done.wait(guard, [&] { return data.initialized == Initialized::yes; });
  return false;
}

}  // namespace

bool initializeClass(Class cls) {
  if (rw(cls)->instanceClass != nullptr) cls = rw(cls)->instanceClass;
  ClassRw& data = *rw(cls);
  if (data.initialized.load(std::memory_order_acquire) == Initialized::yes) return true;
  if (cls->superclass != nullptr) initializeClass(cls->superclass);
  if (begin(data)) {
    // The class counts as initialised even if its method raises.
    struct Finally {
      ClassRw& data;
      ~Finally() { finish(data); }
    } finally{data};
    // It is inherited, so a superclass's may run more than once.
    static SEL initialize = sel_registerName("initialize");
    if (IMP initializer = overridden(cls->isa, initialize))
      reinterpret_cast<void (*)(Class, SEL)>(initializer)(cls, initialize);
  }
  return data.initialized.load(std::memory_order_acquire) == Initialized::yes;
}

}  // namespace host::runtime
