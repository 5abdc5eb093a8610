// Checks the bytes of a property list before the parsing library sees them, which recurses into
// what it reads and copies what is shared. Nothing here recurses, or allocates more than the file's
// size allows.
#pragma once

#include <string_view>

namespace host {

enum class PropertyListFormat {
  refused,  ///< neither XML nor binary, or too deep, too large when expanded, or damaged
  xml,
  binary,
};

/// The format, if it is safe to give the bytes to the parsing library.
PropertyListFormat guardPropertyList(std::string_view bytes);

/// Whether the bytes claim to be a binary property list.
bool isBinaryPropertyList(std::string_view bytes);

bool isSafeBinaryPropertyList(std::string_view bytes);
/// The text must begin with its first tag.
bool isSafeXmlPropertyList(std::string_view text);

/// The text of an XML property list, without byte order mark and leading white space.
std::string_view withoutPreamble(std::string_view text);

}  // namespace host
