// A command line, read by what the program's declaration says.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/command.h"

namespace varnix::cli {

/// Reads the words into what the options point at. Returns what is to be done: the action of the
/// command that was chosen, or one that prints the help or the version. Throws UsageError.
std::function<int()> parse(const Command& program, std::vector<std::string> words);

}  // namespace varnix::cli
