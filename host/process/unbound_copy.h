// A library that does not find some of its functions, as on a phone that lacks them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// A file to load in the library's place: itself where it asks for none of the functions, else a
/// copy in memory whose weak references to them are nil. Throws std::runtime_error where it cannot
/// do without one, as the platform's loader refuses it, and for a file that cannot be read.
std::filesystem::path withoutFunctions(const std::filesystem::path& library,
                                       const std::vector<std::string>& functions);

}  // namespace host
