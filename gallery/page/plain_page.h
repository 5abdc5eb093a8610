// What the page shows where scripts are off.
#pragma once

#include <string>

#include "common/json_forward.h"

namespace varnix::cli::gallery {

/// The pictures of pageData as HTML, before and after side by side.
std::string plainPage(const Json& data);

}  // namespace varnix::cli::gallery
