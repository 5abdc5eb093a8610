// The classes of this process, by name.
#pragma once

#include <string>
#include <vector>

#include "runtime/runtime.h"

namespace varnix::cli {

/// Those that have methods, in the order of the alphabet.
std::vector<std::string> classNames();

/// Throws Failure where there is none of that name.
Class classNamed(const char* name);

}  // namespace varnix::cli
