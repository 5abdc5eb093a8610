// The libraries that an image asks for, held against those that there are.
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

/// Reads facts/libraries.tsv: name and version between tabs, lines with # are comments. Throws
/// Error, with the line, for another form.
LibraryVersions readLibraryVersions(std::string_view text);

/// The version of the library of that name; nothing where there is none.
using OfferedVersion = std::function<std::optional<uint32_t>(std::string_view name)>;

/// Marks as missing what may be and is not there, or in a version before the one that is demanded.
/// Any other library that is so throws Error, in the words of the platform's loader.
void findNeeded(ImageFile& image, const OfferedVersion& offered);

}  // namespace varnix::device
