// Property lists: reading and writing XML and binary ones.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "export.h"
#include "platform/Foundation.h"

namespace host {

/// The object tree of a property list, autoreleased, where references of keyed archives are objects
/// too (keyed_archive_uid.h); nil for what cannot be parsed, is deeper than
/// kMaximumDepth, larger than kMaximumBytes, or expands to more than kMaximumNodes.
HOST_EXPORT NSObject* propertyListFromData(std::string_view bytes);
/// The same for a file on this machine; nil too where it is missing, unreadable or no plain file.
HOST_EXPORT NSObject* propertyListFromFile(const std::string& path);

/// The XML form, or nothing where the tree holds an object that a property list cannot.
HOST_EXPORT std::optional<std::string> xmlFromPropertyList(NSObject* root);
/// The same in binary form; nothing either for more than kMaximumBinaryNodes.
HOST_EXPORT std::optional<std::string> binaryFromPropertyList(NSObject* root);

/// Writes a file on this machine, in place or through a temporary file and rename. Missing folders
/// are not made. False on failure, the old file intact in the atomic case. There the new file gets
/// the old one's owner and mode, or it is a failure.
HOST_EXPORT bool writeFile(const std::string& path, std::string_view contents, bool atomically);

/// Removes the temporary files for this one that processes left behind which are gone.
HOST_EXPORT void clearLeftovers(const std::string& path);

inline constexpr std::size_t kMaximumDepth = 128;
inline constexpr std::size_t kMaximumBytes = 16 << 20;
inline constexpr std::size_t kMaximumNodes = 1 << 20;
/// The library that writes looks for each node among all that are alike: its time goes with the
/// square of their number, and this many take a second.
inline constexpr std::size_t kMaximumBinaryNodes = 1 << 17;

}  // namespace host
