// The queues that exist from the start: the main thread's and the global ones.
#pragma once

#include "objc/object.h"
#include "platform/Dispatch.h"

namespace host::dispatch {

/// The default target of a queue.
dispatch_queue_t defaultTarget();

}  // namespace host::dispatch
