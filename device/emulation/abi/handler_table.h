// A function's table of handlers, as 32-bit devices have it: calls are numbered.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "macho/bytes.h"

namespace varnix::device {

/// Where a function goes on: the number of a place in it, and which of its handlers that is. Zero
/// is a cleanup, which then passes the exception on.
struct Landing {
  uint32_t place = 0;
  int32_t selector = 0;
};

/// Looks for the landing of an exception during the call with that number, from one. `catches` says
/// whether a handler takes the exception, by the address of its type; nil takes everything. Nothing
/// if the function lets the exception pass. The table may be longer than it is. Throws Error for an
/// unknown form.
std::optional<Landing> findLanding(Reader table, uint32_t call,
                                   const std::function<bool(const void* type)>& catches);

}  // namespace varnix::device
