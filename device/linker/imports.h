// What an object needs from other libraries, and which library has it.
#pragma once

#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "linker/object.h"
#include "linker/stub_library.h"

namespace varnix::device {

struct Import {
  std::string_view name;
  uint32_t ordinal = 0;          ///< The library's number, from one, in load order.
  bool isWeak = false;           ///< Null if the library lacks it, not an error.
  std::optional<uint32_t> stub;  ///< For a called function: its number among the stubs.
};

struct Imports {
  std::vector<Import> all;              ///< By name.
  std::map<uint32_t, size_t> ofSymbol;  ///< From a symbol's index in the object to one in `all`.
  uint32_t stubCount = 0;
};

/// Throws Error naming every symbol that no library has, and any that two have.
Imports findImports(const Object& object, const std::vector<StubLibrary>& libraries);

}  // namespace varnix::device
