// The small pane in C of examples/pane, at the command line.
#pragma once

#include "pane/pane_face.h"

namespace varnix::cli {

/// The library is loaded. Prints every setting. Throws Failure.
PaneFace examplePane(bool withSwatches);
/// Its commands, for people.
std::string exampleHelp();

}  // namespace varnix::cli
