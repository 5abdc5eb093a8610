// The layout: the library's sections, their addresses and their offsets in the file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "linker/object.h"

namespace varnix::device {

/// Segments begin on pages of this size, which suits processors with pages of 4 KiB and of 16 KiB.
inline constexpr uint32_t kPageSize = 0x4000;

struct OutputSection {
  std::string segment, name;
  uint32_t size = 0;
  uint32_t alignment = 0;  ///< The power of two.
  uint32_t flags = 0;
  uint32_t firstIndirect = 0;  ///< Of pointers and stubs: the first of its indirect symbols.
  uint32_t stubSize = 0;
  std::vector<uint8_t> content;  ///< Empty for zeros.
  uint32_t address = 0;          ///< Also the offset in the file, since the library begins at 0.

  bool isZeros() const;
};

struct Segment {
  uint32_t address = 0, size = 0, fileOffset = 0, fileSize = 0;
};

struct Layout {
  std::vector<OutputSection> sections;  ///< By address: __TEXT, __DATA, __DATA's zeros.
  std::vector<size_t> ofObject;         ///< From an object's section to one of `sections`.
  size_t stubs = 0, stubPointers = 0;   ///< The two sections that the linker adds.
  Segment text, data;
  Segment linkEdit;  ///< Its sizes are not known yet.

  /// The library's address for an address in an object's section.
  uint32_t moved(const Object& object, size_t section, uint32_t address) const;
};

/// Takes over the object's sections, adds stubs and a pointer for each, and places everything after
/// `headerSize` bytes. Throws Error if it does not fit into 16 MiB, a branch's reach.
Layout layOut(const Object& object, uint32_t stubCount, uint32_t headerSize);

}  // namespace varnix::device
