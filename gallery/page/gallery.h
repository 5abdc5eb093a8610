// The page that shows the drawn screens before and after, and measures the colours.
#pragma once

#include <filesystem>

#include "common/json_forward.h"

namespace varnix::cli {

/// Writes index.html, which contains everything except the pictures, and gallery.js and state.js,
/// which tell an open page about a later call. state.js is written last. The pictures must already
/// be in the folder: a page swaps those whose bytes changed.
///
/// `gallery` is {"follows": whether there may be later calls, "tabs": [{"id", "title", "summary",
/// "screens": [{"id", "title", "light":
/// {"before": PATH, "after": PATH}, "dark": the same}], "surfaces": [{"process", "class",
/// "property", "case", "before", "after", "behind"}]}]}. Paths of pictures are relative to the
/// folder; either wallpaper may be missing. "before" and "after" are "#rrggbbaa", a boolean or
/// null; "behind" is
/// "#rrggbb" or null. Throws Failure for a picture that cannot be read and a file that cannot be
/// written, and nlohmann's exceptions for a gallery of another shape.
void writeGallery(const std::filesystem::path& folder, const Json& gallery);

}  // namespace varnix::cli
