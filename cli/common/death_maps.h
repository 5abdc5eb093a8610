// Which file an address of this process is in. Safe in a signal handler: it allocates nothing and
// takes no lock.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace varnix::cli {

/// Remembers the name under which a library was given, wherever it is loaded. Not for handlers.
void nameLibrary(const std::string& file);

/// Notes where everything is loaded now.
void readMaps();

/// The remembered name of the library at that address; nil if it has none.
const char* namedLibraryAt(std::uintptr_t address);

/// The file that is mapped there; empty for memory without a file.
std::string_view fileAt(std::uintptr_t address);

}  // namespace varnix::cli
