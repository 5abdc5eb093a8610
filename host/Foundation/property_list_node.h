// The parsing library's nodes: ownership, and values that its functions give only in part.
#pragma once

#include <plist/plist.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace host::plist {

struct FreeNode {
  void operator()(void* node) const { plist_free(node); }
};
/// A tree with a single owner.
using Tree = std::unique_ptr<void, FreeNode>;

/// Seconds since 2001; nothing for a time outside the years 0 to 9999, which cannot be written.
std::optional<double> seconds(plist_t date);
Tree dateNode(double seconds);

/// Whether an integer whose highest bit is set is a large one rather than a negative one.
bool isUnsigned(plist_t integer);
Tree unsignedNode(std::uint64_t value);

}  // namespace host::plist
