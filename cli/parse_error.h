// The argument parser's complaints in our words.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace varnix::cli {

std::string messageFor(const CLI::ParseError& error);

}  // namespace varnix::cli
