// Which file an address of this process lies in, for a signal's handler: it takes no memory and no
// lock.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace varnix::cli {

/// A library that is to be named as it was given, wherever it comes to lie. Not for handlers.
void nameLibrary(const std::string& file);

/// Notes where everything lies now.
void readMaps();

/// The name of a library that was given one, where the address lies in it; nil elsewhere.
const char* namedLibraryAt(std::uintptr_t address);

/// The file of whatever lies there; empty for what comes from no file.
std::string_view fileAt(std::uintptr_t address);

}  // namespace varnix::cli
