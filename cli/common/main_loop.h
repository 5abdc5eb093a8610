// The main run loop, as a command that acts step by step turns it.
#pragma once

namespace varnix::cli {

/// Handles what is ready, and what that leaves on the main queue: what a handler leaves there comes
/// a turn later, and so on a few times.
void settleMainLoop();

}  // namespace varnix::cli
