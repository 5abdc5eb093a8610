// What a command says beside its answer.
#pragma once

#include <string>

namespace varnix::cli {

/// One line on standard error, "varnix: " and the text, behind what was printed so far.
void warn(const std::string& text);

}  // namespace varnix::cli
