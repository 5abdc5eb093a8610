// Reading whole files.
#pragma once

#include <optional>
#include <string>

#include "export.h"
#include "platform/Foundation.h"

namespace host {

/// The contents of a regular file; nothing if it is missing, unreadable, larger than the limit, or
/// not a regular file, such as a pipe that would keep the reader waiting.
HOST_EXPORT std::optional<std::string> fileContents(const std::string& path, std::size_t limit);

/// The same as data, autoreleased; nil if there is nothing.
HOST_EXPORT NSData* fileData(const std::string& path, std::size_t limit);

}  // namespace host
