// The data for the page.
#pragma once

#include <filesystem>

#include "common/json_forward.h"

namespace varnix::cli::gallery {

/// The gallery with {"path", "revision"} for each picture, whose revision changes with its bytes;
/// with {"contrast", "below", "nearest"} for each surface; and with a revision of everything.
/// contrast is cut to two decimals, and null if nothing was dyed or the colour behind is unknown.
/// below is the limit that the colour misses, 3 or 4.5, else null. If it is not null, nearest is
/// the nearest colour that reaches 4.5, "#rrggbb".
Json pageData(const std::filesystem::path& folder, const Json& gallery);

}  // namespace varnix::cli::gallery
