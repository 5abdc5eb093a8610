// Pictures inside a page.
#pragma once

#include <string>

namespace varnix::screens {

/// The "data:" URL of a PNG file.
std::string dataAddress(const std::string& png);

}  // namespace varnix::screens
