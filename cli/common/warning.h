// What a command says besides its answer.
#pragma once

#include <string>

namespace varnix::cli {

/// One line on standard error, "varnix: " and the text, after what was printed so far.
void warn(const std::string& text);

}  // namespace varnix::cli
