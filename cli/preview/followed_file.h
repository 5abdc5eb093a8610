// Keeps a container's settings the same as a file that somebody edits.
#pragma once

#include <functional>
#include <string>

#include "preview/file_watch.h"

namespace varnix::cli {

/// Copies the file to the copy whenever it has changed and holds settings, and then calls the
/// function, until the command is interrupted. While it holds none, or is not there, the copy
/// stays, and a warning says why. Throws Failure, Interrupted, and what the function throws.
[[noreturn]] void followFile(FileWatch& watch, const std::string& file, const std::string& copy,
                             const std::function<void()>& changed);

}  // namespace varnix::cli
