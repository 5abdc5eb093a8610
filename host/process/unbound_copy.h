// A library that does not find some of its functions, as on a phone that lacks them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// A file to load instead of the library: the library itself if it asks for none of the functions,
/// else a copy in memory whose weak references to them are nil. Throws std::runtime_error if the
/// library needs one of them, as the platform's loader refuses it, and for a file that cannot be
/// read.
std::filesystem::path withoutFunctions(const std::filesystem::path& library,
                                       const std::vector<std::string>& functions);

}  // namespace host
