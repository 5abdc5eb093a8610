// Runs the main run loop for a command that acts step by step.
#pragma once

namespace varnix::cli {

/// Handles what is ready, and then what the handlers put on the main queue, for a few turns.
void settleMainLoop();

}  // namespace varnix::cli
