// Icons as given on the command line.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace varnix::cli {

/// From "ID=FILE", by identifier. Throws UsageError.
std::map<std::string, std::string> iconsFrom(const std::vector<std::string>& choices);

}  // namespace varnix::cli
