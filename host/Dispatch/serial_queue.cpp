#include "Dispatch/serial_queue.h"

#include "Dispatch/root_queues.h"
#include "Foundation/log.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"

namespace host::dispatch {

SerialQueue::SerialQueue(dispatch_queue_t self, const char* label)
    : self_(self),
      label_(label == nullptr ? "" : label),
      target_(Strong<dispatch_queue_s>::retain(defaultTarget())) {}

void SerialQueue::enqueue(Work work) {
  Strong<dispatch_queue_s> target;
  {
    const std::lock_guard lock(mutex_);
    pending_.push_back(std::move(work));
    if (hasTurn_) return;
    hasTurn_ = true;
    target = target_;
  }
  putTurnInto(target);
}

void SerialQueue::putTurnInto(const Strong<dispatch_queue_s>& target) {
  body(target).enqueue(
      [this, self = Strong<dispatch_queue_s>::retain(self_), target] { turn(target); });
}

void SerialQueue::turn(dispatch_queue_t target) {
  {
    // What the work autoreleases and holds is released before the next one begins.
    objc::AutoreleasePool pool;
    Work work;
    {
      const std::lock_guard lock(mutex_);
      // If the queue was aimed elsewhere after this turn was enqueued, the next turn has the work.
      if (target_.get() == target) {
        work = std::move(pending_.front());
        pending_.pop_front();
      }
    }
    if (work) work();
  }
  Strong<dispatch_queue_s> next;
  {
    const std::lock_guard lock(mutex_);
    hasTurn_ = !pending_.empty();
    if (!hasTurn_) return;
    next = target_;
  }
  putTurnInto(next);
}

Strong<dispatch_queue_s> SerialQueue::target() {
  const std::lock_guard lock(mutex_);
  return target_;
}

bool SerialQueue::aimAt(dispatch_queue_t target) {
  // Only one at a time: otherwise two queues could be aimed at each other.
  static constinit std::mutex aiming;
  const std::lock_guard aimingLock(aiming);
  for (auto at = Strong<dispatch_queue_s>::retain(target); at.get() != nullptr;
       at = body(at).target()) {
    if (at.get() == self_) return false;
  }
  auto replaced = Strong<dispatch_queue_s>::retain(target);  // released after the lock
  const std::lock_guard lock(mutex_);
  std::swap(target_, replaced);
  return true;
}

namespace {

struct QueueObject : Queue {
  void dealloc() {
    delete serial();
    object_dispose(this);
  }
  SerialQueue* serial() { return static_cast<SerialQueue*>(body); }
};

}  // namespace

}  // namespace host::dispatch

using host::dispatch::Queue;
using host::dispatch::QueueObject;

OBJC_CLASS_NAMED(OS_dispatch_queue, NSObject, QueueObject, NSObject,
                 objc::Ivar<"body", &Queue::body>, objc::Method<"dealloc", &QueueObject::dealloc>)

extern "C" {

dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_s*) {
  auto* queue = static_cast<QueueObject*>(class_createInstance(&objc_class_OS_dispatch_queue, 0));
  queue->body = new host::dispatch::SerialQueue(queue, label);
  return queue;
}

void dispatch_set_target_queue(NSObject* object, dispatch_queue_t target) {
  if (object == nullptr || object->isa != &objc_class_OS_dispatch_queue) {
    host::log(host::LogLevel::error, "a target is set for something that is no serial queue");
    return;
  }
  if (target == nullptr) target = host::dispatch::defaultTarget();
  if (!static_cast<QueueObject*>(object)->serial()->aimAt(target))
    host::log(host::LogLevel::error, "a queue is aimed at itself");
}
}
