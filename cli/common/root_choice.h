// Which container a command means.
#pragma once

#include <optional>
#include <string>

namespace varnix::cli {

/// A command that reads, or removes, has nothing to find in a folder that is not there.
enum class RootUse { reads, changes };

/// The option's folder, else the environment's, else the user's own; made where it is missing and
/// something is to be changed. Throws UsageError for an empty name and Failure.
std::string chosenRoot(const std::optional<std::string>& option, RootUse use);

}  // namespace varnix::cli
