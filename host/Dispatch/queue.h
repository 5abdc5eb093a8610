// What the stand-in's queues offer beyond the library's own declarations.
#pragma once

#include "export.h"
#include "objc/object.h"
#include "platform/Dispatch.h"

extern "C" {
/// The queue's label, empty if it has none. For nil, that of the queue whose block is running on
/// this thread, empty outside all blocks.
HOST_EXPORT const char* dispatch_queue_get_label(dispatch_queue_t queue);
/// Retain and release, as for any object.
HOST_EXPORT void dispatch_retain(NSObject* object);
HOST_EXPORT void dispatch_release(NSObject* object);
}
