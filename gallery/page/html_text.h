// Text in HTML.
#pragma once

#include <string>
#include <string_view>

namespace varnix::cli::gallery {

/// As text, or as an attribute's value in quotation marks.
std::string htmlText(std::string_view text);

}  // namespace varnix::cli::gallery
