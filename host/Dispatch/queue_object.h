// A queue as an object: a class pointer, and a body that differs from kind to kind.
#pragma once

#include <functional>

#include "objc/object.h"
#include "objc/strong.h"
#include "platform/Dispatch.h"

namespace host::dispatch {

/// Something to run once, in an autorelease pool of its own. It never throws: an exception that
/// leaves a block ends the process.
using Work = std::function<void()>;

class QueueBody {
 public:
  virtual void enqueue(Work work) = 0;
  /// The queue's target, where its work runs; nil for a queue without one.
  virtual Strong<dispatch_queue_s> target() { return nullptr; }
  virtual const char* label() const = 0;

 protected:
  // Bodies of queues that live as long as the process are never destroyed, not even at its end:
  // blocks may still be running then.
  ~QueueBody() = default;
};

struct Queue : dispatch_queue_s {
  QueueBody* body;
};

/// The body of a queue that is there.
inline QueueBody& body(dispatch_queue_t queue) { return *static_cast<Queue*>(queue)->body; }

}  // namespace host::dispatch
