// Functions that the library gets instead of the stand-in's own.
#pragma once

#include <string_view>

namespace varnix::device {

/// By the name without its underscore; nil if the stand-in's function works unchanged.
void* adapterFor(std::string_view name);

/// The process's own symbol; nil if there is none.
void* linuxSymbol(std::string_view name);

}  // namespace varnix::device
