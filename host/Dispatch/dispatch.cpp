// What all queues have in common: they take blocks, are counted, and have labels.
#include <utility>

#include "Dispatch/queue.h"
#include "Dispatch/queue_object.h"
#include "Foundation/log.h"

using namespace host::dispatch;

namespace {

/// The queue whose block is running on this thread, or nil.
thread_local constinit dispatch_queue_t current = nullptr;

/// A block may run the main loop, and so other blocks inside itself.
class CurrentQueue {
 public:
  explicit CurrentQueue(dispatch_queue_t queue) : outer_(std::exchange(current, queue)) {}
  CurrentQueue(const CurrentQueue&) = delete;
  CurrentQueue& operator=(const CurrentQueue&) = delete;
  ~CurrentQueue() { current = outer_; }

 private:
  dispatch_queue_t outer_;
};

}  // namespace

extern "C" {

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
  if (queue == nullptr || block == nullptr) {
    host::log(host::LogLevel::error, "dispatch_async without a queue or a block");
    return;
  }
  // While it runs, the queue's turn keeps the queue alive.
  body(queue).enqueue([queue, kept = objc::keepBlock(block)]() noexcept {
    const CurrentQueue scope(queue);
    kept();
  });
}

const char* dispatch_queue_get_label(dispatch_queue_t queue) {
  if (queue == nullptr) queue = current;
  return queue == nullptr ? "" : body(queue).label();
}

void dispatch_retain(NSObject* object) { objc_retain(object); }
void dispatch_release(NSObject* object) { objc_release(object); }
}
