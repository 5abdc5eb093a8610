// Compares the libraries that an image asks for with those that exist.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "loader/image_file.h"

namespace varnix::device {

/// Compatibility versions by install name.
using LibraryVersions = std::map<std::string, uint32_t, std::less<>>;

/// Reads facts/libraries.tsv: name and version separated by tabs, lines with # are comments. Throws
/// Error, with the line, for any other form.
LibraryVersions readLibraryVersions(std::string_view text);

/// The version of the library of that name; nothing if there is none.
using OfferedVersion = std::function<std::optional<uint32_t>(std::string_view name)>;

/// Marks weakly linked libraries as missing if they do not exist, or are older than demanded.
/// Throws Error for any other such library, in the words of the platform's loader.
void findNeeded(ImageFile& image, const OfferedVersion& offered);

}  // namespace varnix::device
