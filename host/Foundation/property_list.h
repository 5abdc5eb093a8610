// Property lists: reading and writing XML and binary ones.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "export.h"
#include "platform/Foundation.h"

namespace host {

/// The object tree of a property list, autoreleased. References of keyed archives are objects too
/// (keyed_archive_uid.h). Nil if it cannot be parsed, is deeper than kMaximumDepth, larger than
/// kMaximumBytes, or expands to more than kMaximumNodes.
HOST_EXPORT NSObject* propertyListFromData(std::string_view bytes);
/// The same for a file on this machine; also nil if it is missing, unreadable or not a plain file.
HOST_EXPORT NSObject* propertyListFromFile(const std::string& path);

/// The XML form, or nothing if the tree has an object that a property list cannot hold.
HOST_EXPORT std::optional<std::string> xmlFromPropertyList(NSObject* root);
/// The same in binary form; also nothing for more than kMaximumBinaryNodes.
HOST_EXPORT std::optional<std::string> binaryFromPropertyList(NSObject* root);

/// Writes a file on this machine, in place or through a temporary file and rename. Missing folders
/// are not made. False on failure; in the atomic case the old file is then intact. There the new
/// file must get the old one's owner and mode, otherwise it is a failure.
HOST_EXPORT bool writeFile(const std::string& path, std::string_view contents, bool atomically);

/// Removes temporary files for this one that were left behind by processes that have ended.
HOST_EXPORT void clearLeftovers(const std::string& path);

inline constexpr std::size_t kMaximumDepth = 128;
inline constexpr std::size_t kMaximumBytes = 16 << 20;
inline constexpr std::size_t kMaximumNodes = 1 << 20;
/// The writing library searches for each node among all equal ones: its time grows with the square
/// of their number, and this many take a second.
inline constexpr std::size_t kMaximumBinaryNodes = 1 << 17;

}  // namespace host
