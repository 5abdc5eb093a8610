// The manual page.
#pragma once

#include <string>

#include "common/command.h"

namespace varnix::cli {

/// In the format of man(7).
std::string manualPage(const Command& program);

}  // namespace varnix::cli
