#include "Dispatch/root_queues.h"

#include <array>

#include "Dispatch/worker_pool.h"
#include "Foundation/run_loop.h"
#include "objc/define.h"

namespace {

using namespace host::dispatch;

class MainQueue final : public QueueBody {
 public:
  void enqueue(Work work) override { host::MainRunLoop::instance().perform(std::move(work)); }
  const char* label() const override { return "com.apple.main-thread"; }
};

class GlobalQueue final : public QueueBody {
 public:
  constexpr GlobalQueue(long number, Priority priority, const char* label)
      : number_(number), priority_(priority), label_(label) {}
  void enqueue(Work work) override { WorkerPool::instance().enqueue(priority_, std::move(work)); }
  const char* label() const override { return label_; }
  long number() const { return number_; }

 private:
  long number_;
  Priority priority_;
  const char* label_;
};

/// A queue that is stored in the binary: never counted, never freed.
struct RootQueue : Queue {
  RootQueue* keep() { return this; }
  void let() {}
};

/// The same without a constructor, which objects lack.
struct StoredQueue {
  Class isa;
  QueueBody* body;
};
static_assert(sizeof(StoredQueue) == sizeof(RootQueue));

}  // namespace

OBJC_CLASS_NAMED(OS_dispatch_queue_root, OS_dispatch_queue, RootQueue, Queue,
                 objc::Method<"retain", &RootQueue::keep>, objc::Method<"release", &RootQueue::let>,
                 objc::Method<"autorelease", &RootQueue::keep>)

namespace {

constinit MainQueue mainBody;
constinit std::array globalBodies{
    GlobalQueue{2, Priority::high, "com.apple.root.user-initiated-qos"},
    GlobalQueue{0, Priority::normal, "com.apple.root.default-qos"},
    GlobalQueue{-2, Priority::low, "com.apple.root.utility-qos"},
    GlobalQueue{-32768, Priority::background, "com.apple.root.background-qos"},
};
constinit std::array globalQueues{
    StoredQueue{&objc_class_OS_dispatch_queue_root, &globalBodies[0]},
    StoredQueue{&objc_class_OS_dispatch_queue_root, &globalBodies[1]},
    StoredQueue{&objc_class_OS_dispatch_queue_root, &globalBodies[2]},
    StoredQueue{&objc_class_OS_dispatch_queue_root, &globalBodies[3]},
};
static_assert(globalBodies.size() == globalQueues.size());

}  // namespace

extern "C" {
[[gnu::used, gnu::visibility("default")]] constinit StoredQueue host_dispatch_main_queue{
    &objc_class_OS_dispatch_queue_root, &mainBody};

dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags) {
  if (flags != 0) return nullptr;
  for (std::size_t i = 0; i < globalQueues.size(); ++i) {
    if (globalBodies[i].number() == priority)
      return reinterpret_cast<dispatch_queue_t>(&globalQueues[i]);
  }
  return nullptr;
}
}

// C++ cannot define the object itself, so the symbol is another name for the storage above.
asm(R"(
        .globl _dispatch_main_q
        .set _dispatch_main_q, host_dispatch_main_queue
)");

namespace host::dispatch {

dispatch_queue_t defaultTarget() { return dispatch_get_global_queue(0, 0); }

}  // namespace host::dispatch
