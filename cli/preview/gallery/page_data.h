// What the page is told.
#pragma once

#include <filesystem>

#include "json.h"

namespace varnix::cli::gallery {

/// The gallery with {"path", "revision"} for each picture, where the revision changes with its
/// bytes; with {"contrast", "below", "nearest"} for each surface: contrast is cut to two
/// decimals, below is the limit that it misses (3 or 4.5) and nearest what reaches 4.5 instead, as
/// "#rrggbb"; null where there is no contrast to measure, or nothing missed. And with a revision of
/// it all.
Json pageData(const std::filesystem::path& folder, const Json& gallery);

}  // namespace varnix::cli::gallery
