// The names that a library exports, stored as a tree of prefixes.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "macho/bytes.h"

namespace varnix::device {

/// The entry at the end of a name.
struct ExportTerminal {
  uint64_t flags = 0;   ///< macho::kExportKindMask and its like.
  uint64_t offset = 0;  ///< From the image's start; for a re-export a library's number.
  bool isWhole = true;  ///< Whether its size fits its contents.
};

/// Calls `each` for every name. Throws Error if it is not a tree, leaves its bytes, is deeper than
/// 256 nodes, or has a name of more than 4096 bytes.
void walkExportTree(Reader tree,
                    const std::function<void(const std::string&, const ExportTerminal&)>& each);

/// Looks up a name as the platform's loader does: at each node it follows the first edge that fits.
/// Throws Error if it leaves the tree.
std::optional<ExportTerminal> findExport(Reader tree, std::string_view name);

}  // namespace varnix::device
