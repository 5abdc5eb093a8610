// Adjusts the sections' contents to their final addresses.
#pragma once

#include <cstdint>
#include <vector>

#include "linker/imports.h"
#include "linker/layout.h"

namespace varnix::device {

/// A word that the loader sets to the address of an import, plus an addend.
struct Bind {
  uint32_t address = 0;
  size_t import = 0;
  int32_t addend = 0;
};

/// What remains for the loader.
struct Fixups {
  std::vector<uint32_t> rebases;  ///< Addresses of words that hold an address in the library.
  std::vector<Bind> binds;
};

/// Applies the relocations, and fills in the stubs and the pointers. Throws Error for a relocation
/// for which the loader would have to write into the code.
Fixups relocate(const Object& object, const Imports& imports, Layout& layout);

/// The address of a symbol that the object defines; a function's has the Thumb bit.
uint32_t addressOf(const Object& object, const Layout& layout, const Symbol& symbol);

}  // namespace varnix::device
