// A queue that runs one block after another.
#pragma once

#include <deque>
#include <mutex>
#include <string>

#include "Dispatch/queue_object.h"

namespace host::dispatch {

/// While it has work, its target holds one turn of this queue: the turn runs one piece of work and
/// enqueues the next turn. So a queue never runs two pieces at once, nor one at the same time as
/// the work of a serial queue that is its target.
class SerialQueue final : public QueueBody {
 public:
  SerialQueue(dispatch_queue_t self, const char* label);

  void enqueue(Work work) override;
  Strong<dispatch_queue_s> target() override;
  const char* label() const override { return label_.c_str(); }

  /// Work that has not begun runs on the new target. False for a target that leads back here.
  bool aimAt(dispatch_queue_t target);

 private:
  void putTurnInto(const Strong<dispatch_queue_s>& target);
  void turn(dispatch_queue_t target);

  const dispatch_queue_t self_;  ///< the object that owns this body
  const std::string label_;
  std::mutex mutex_;
  Strong<dispatch_queue_s> target_;
  std::deque<Work> pending_;
  bool hasTurn_ = false;
};

}  // namespace host::dispatch
