// Functions that the library gets in place of the stand-in's own.
#pragma once

#include <string_view>

namespace varnix::device {

/// By the name without its underscore; nil where the stand-in's function will do as it is.
void* adapterFor(std::string_view name);

/// The process's own symbol; nil where there is none.
void* linuxSymbol(std::string_view name);

}  // namespace varnix::device
