// The data for the page.
#pragma once

#include <filesystem>

#include "common/json_forward.h"

namespace varnix::cli::gallery {

/// The gallery with {"path", "revision"} for each picture, whose revision changes with its bytes,
/// and with a revision of everything.
Json pageData(const std::filesystem::path& folder, const Json& gallery);

}  // namespace varnix::cli::gallery
