// The queues that are there from the start: the main thread's and the global ones.
#pragma once

#include "objc/object.h"
#include "platform/Dispatch.h"

namespace host::dispatch {

/// Where a queue's work runs that nobody aimed elsewhere.
dispatch_queue_t defaultTarget();

}  // namespace host::dispatch
