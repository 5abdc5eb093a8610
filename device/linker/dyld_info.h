// The loader's instructions: which words to set, and which names others may look up.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "linker/imports.h"
#include "linker/layout.h"
#include "linker/relocate.h"

namespace varnix::device {

/// Opcodes that add the library's own address to words of __DATA. `addresses` are sorted.
std::vector<uint8_t> rebaseOpcodes(const std::vector<uint32_t>& addresses, const Layout& layout);

/// Opcodes that set words of __DATA to imports' addresses.
std::vector<uint8_t> bindOpcodes(std::vector<Bind> binds, const Imports& imports,
                                 const Layout& layout);

struct Export {
  std::string_view name;
  uint32_t address = 0;  ///< With the Thumb bit.
};

/// The names as a prefix tree. Each name appears in it once. Empty for none.
std::vector<uint8_t> exportTrie(std::vector<Export> exports);

}  // namespace varnix::device
