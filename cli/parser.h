// Reads a command line as the program's declaration says.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/command.h"

namespace varnix::cli {

/// Stores the words in the options' targets. Returns what to do: the chosen command's action, or
/// one that prints the help or the version. Throws UsageError.
std::function<int()> parse(const Command& program, std::vector<std::string> words);

}  // namespace varnix::cli
