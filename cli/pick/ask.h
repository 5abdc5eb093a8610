// Analysing pictures.
#pragma once

#include "pick/analysis.h"

namespace varnix::cli::pick {

/// Turns this process into an application's, since the library's code asks one for its state.
/// Throws what the module throws.
Answer ask(const Request& request);

}  // namespace varnix::cli::pick
