// Fast enumeration, as compilers call it.
#pragma once

#include <algorithm>
#include <span>

#include "objc/object.h"
#include "runtime/send.h"

namespace host {

/// What a loop keeps between two calls of countByEnumeratingWithState:objects:count:. The first
/// state is zero.
struct EnumerationState {
  unsigned long state;
  NSObject** items;
  unsigned long* mutations;  ///< a change of this number stops the loop
  unsigned long extra[5];
};

/// Hands out the elements from the index in the state on, as many as the buffer takes. At gives the
/// element of an index.
template <class At>
std::size_t enumerate(EnumerationState* state, NSObject** buffer, std::size_t capacity,
                      std::size_t size, unsigned long* mutations, At at) {
  const std::size_t first = state->state;
  const std::size_t count = first < size ? std::min(capacity, size - first) : 0;
  for (std::size_t i = 0; i < count; ++i) buffer[i] = at(first + i);
  state->state = first + count;
  state->items = buffer;
  state->mutations = mutations;
  return count;
}

/// The elements of any collection, by fast enumeration.
template <class Each>
void forEachElement(NSObject* collection, Each each) {
  if (collection == nullptr) return;
  EnumerationState state{};
  NSObject* buffer[16];
  while (const std::size_t count = send<std::size_t>(
             collection, "countByEnumeratingWithState:objects:count:"_sel,
             static_cast<void*>(&state), static_cast<NSObject**>(buffer), std::size_t{16}))
    for (std::size_t i = 0; i < count; ++i) each(state.items[i]);
}

}  // namespace host
