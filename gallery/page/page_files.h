// The page's parts as they lie in the program.
#pragma once

#include <string_view>

namespace varnix::cli::gallery {

/// With the lines <!-- style -->, <!-- script --> and <!-- data --> in the places of the others.
std::string_view pageHtml();
std::string_view pageStyle();
std::string_view pageScript();

}  // namespace varnix::cli::gallery
