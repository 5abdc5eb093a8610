// Which container a command uses.
#pragma once

#include <optional>
#include <string>

namespace varnix::cli {

/// A command that reads or removes finds nothing in a folder that does not exist.
enum class RootUse { reads, changes };

/// The option's folder, else the environment's, else the user's own. It is made if it is missing
/// and the command changes something. Throws UsageError for an empty name, and Failure.
std::string chosenRoot(const std::optional<std::string>& option, RootUse use);

}  // namespace varnix::cli
