// The classes of this process, by name.
#pragma once

#include <string>
#include <vector>

namespace varnix::cli {

/// Those that have methods, in the order of the alphabet.
std::vector<std::string> classNames();

}  // namespace varnix::cli
