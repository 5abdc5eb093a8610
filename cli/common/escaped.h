// Text from outside, made safe for a terminal.
#pragma once

#include <string>
#include <string_view>

namespace varnix::cli {

/// Control characters, and bytes that are not UTF-8, as \n, \t or \x1b; everything else as it is.
std::string escaped(std::string_view text);

}  // namespace varnix::cli
