// The contract as Markdown: one table for each class of the platform, and one of C symbols.
#pragma once

#include <string>
#include <vector>

#include "contract/check.h"

namespace varnix::device {

/// What is used from the platform on 32 and 64 bits. Messages to the library's own classes are left
/// out.
std::string contractTable(const std::vector<Judged>& narrow, const std::vector<Judged>& wide,
                          const Facts& facts);

}  // namespace varnix::device
