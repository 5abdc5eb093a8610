// Waiting for input, no longer than there is time, and not past the end that somebody asked for.
#pragma once

#include <chrono>
#include <optional>

namespace varnix::cli {

/// None: no limit.
using Deadline = std::optional<std::chrono::steady_clock::time_point>;

bool isOver(const Deadline& deadline);

/// Whether a read returns at once.
bool isReadable(int descriptor);

/// Waits for that; false where the time is over before. Throws Interrupted.
bool awaitReadable(int descriptor, const Deadline& deadline);

}  // namespace varnix::cli
