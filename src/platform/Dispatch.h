// Grand Central Dispatch: queues and work on them.
#pragma once

#include "objc/block.h"
#include "objc/object.h"

/// A queue is an object, and is retained and released like one.
struct dispatch_queue_s : objc::View<dispatch_queue_s, NSObject> {};
using dispatch_queue_t = dispatch_queue_s*;
struct dispatch_queue_attr_s;
using dispatch_block_t = objc::Block<void()>;
using dispatch_once_t = long;

inline constexpr long DISPATCH_QUEUE_PRIORITY_LOW = -2;

#pragma GCC visibility push(default)
extern "C" {
extern dispatch_queue_s _dispatch_main_q;

/// Serial if there are no attributes. The label is copied. Owned by the caller.
dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_s* attributes);
/// A concurrent queue that lives as long as the process, of priority 2, 0, -2 or -32768; nil for
/// another number.
dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags);
/// Sets the queue on which this queue's blocks run from now on.
void dispatch_set_target_queue(NSObject* object, dispatch_queue_t queue);
/// Runs a copy of the block later, on the queue.
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
/// Runs the block at the first call with this predicate; others wait until it has ended.
void dispatch_once(dispatch_once_t* predicate, dispatch_block_t block);
}
#pragma GCC visibility pop

/// The main thread's queue.
inline dispatch_queue_t dispatch_get_main_queue() { return &_dispatch_main_q; }
