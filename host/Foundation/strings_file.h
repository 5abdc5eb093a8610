// Tables of texts: .strings files.
#pragma once

#include <string>
#include <string_view>

#include "export.h"
#include "platform/Foundation.h"

namespace host {

/// The texts of a table by their keys, autoreleased. It may be a property list, or text in UTF-8 or
/// UTF-16 of the form
///
///   /* a comment */ "key" = "text\n";
///
/// Nil for anything else, and for a text that breaks off.
HOST_EXPORT NSDictionary* stringsFromData(std::string_view bytes);
/// The same for a file on this machine; also nil if it cannot be read.
HOST_EXPORT NSDictionary* stringsFromFile(const std::string& path);

}  // namespace host
