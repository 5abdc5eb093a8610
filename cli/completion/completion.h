// What a shell reads to complete the command's words.
#pragma once

#include <string>

#include "common/command.h"

namespace varnix::cli {

std::string bashCompletion(const Command& program);
std::string zshCompletion(const Command& program);
std::string fishCompletion(const Command& program);

}  // namespace varnix::cli
