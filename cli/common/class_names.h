// The classes of this process, by name.
#pragma once

#include <string>
#include <vector>

#include "runtime/runtime.h"

namespace varnix::cli {

/// The classes that have methods, in alphabetical order.
std::vector<std::string> classNames();

/// Throws Failure if there is no class of that name.
Class classNamed(const char* name);

}  // namespace varnix::cli
