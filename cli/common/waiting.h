// Waits for input, until a deadline or a request to end.
#pragma once

#include <chrono>
#include <optional>

namespace varnix::cli {

/// Without a value there is no limit.
using Deadline = std::optional<std::chrono::steady_clock::time_point>;

bool isOver(const Deadline& deadline);

/// Whether a read would return at once.
bool isReadable(int descriptor);

/// Waits until it would; false if the deadline comes first. Throws Interrupted.
bool awaitReadable(int descriptor, const Deadline& deadline);

}  // namespace varnix::cli
