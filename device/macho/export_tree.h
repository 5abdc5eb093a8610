// The names that a library offers, which stand in a tree of their beginnings.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "macho/bytes.h"

namespace varnix::device {

/// What stands at the end of a name.
struct ExportTerminal {
  uint64_t flags = 0;   ///< macho::kExportKindMask and its like.
  uint64_t offset = 0;  ///< From the image's start; a library's number where it is a re-export.
  bool isWhole = true;  ///< Its size is that of what it says.
};

/// Calls `each` for every name. Throws Error where the tree is no tree, leaves its bytes, is deeper
/// than 256 nodes, or has a name of more than 4096 bytes.
void walkExportTree(Reader tree,
                    const std::function<void(const std::string&, const ExportTerminal&)>& each);

/// Looks a name up as the platform's loader does: at each node it follows the first edge that fits.
/// Throws Error where it leaves the tree.
std::optional<ExportTerminal> findExport(Reader tree, std::string_view name);

}  // namespace varnix::device
