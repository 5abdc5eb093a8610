// The page's parts, stored in the program.
#pragma once

#include <string_view>

namespace varnix::cli::gallery {

/// Contains the lines <!-- style -->, <!-- script --> and <!-- data -->, which the others replace.
std::string_view pageHtml();
std::string_view pageStyle();
std::string_view pageScript();

}  // namespace varnix::cli::gallery
