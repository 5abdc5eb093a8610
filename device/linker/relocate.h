// Makes the sections' contents right for the places that they have been given.
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

/// What is left to the loader.
struct Fixups {
  std::vector<uint32_t> rebases;  ///< Addresses of words that hold an address of the library's own.
  std::vector<Bind> binds;
};

/// Applies the relocations, fills in the stubs and the pointers. Throws Error for a relocation that
/// would need the code to be written to when it is loaded.
Fixups relocate(const Object& object, const Imports& imports, Layout& layout);

/// The address of a symbol that the object defines; a function's carries the Thumb bit.
uint32_t addressOf(const Object& object, const Layout& layout, const Symbol& symbol);

}  // namespace varnix::device
