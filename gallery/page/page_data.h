// What the page is told.
#pragma once

#include <filesystem>

#include "common/json.h"

namespace varnix::cli::gallery {

/// The gallery with {"path", "revision"} for each picture, where the revision changes with its
/// bytes; with {"contrast", "below", "nearest"} for each surface; and with a revision of it all.
/// contrast is cut to two decimals, and null where nothing was dyed or what lies behind is not
/// known. below is the limit that it misses, 3 or 4.5, else null; then nearest is what reaches 4.5,
/// "#rrggbb".
Json pageData(const std::filesystem::path& folder, const Json& gallery);

}  // namespace varnix::cli::gallery
