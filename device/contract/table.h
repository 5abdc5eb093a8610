// The contract as Markdown: a table a class of the platform, and one of C symbols.
#pragma once

#include <string>
#include <vector>

#include "contract/check.h"

namespace varnix::device {

/// What is used of the platform on 32 and on 64 bits. Messages to the library's own classes are
/// left out.
std::string contractTable(const std::vector<Judged>& narrow, const std::vector<Judged>& wide,
                          const Facts& facts);

}  // namespace varnix::device
