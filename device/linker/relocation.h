// One place in an object file that depends on the final layout.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "macho/bytes.h"
#include "macho/format.h"

namespace varnix::device {

struct Relocation {
  uint32_t offset = 0;  ///< Of the place, from its section's start.
  macho::ArmRelocation kind = macho::kVanilla;
  bool isPcRelative = false;
  bool isExternal = false;   ///< `target` is a symbol's index.
  bool isScattered = false;  ///< `target` is an address.
  uint8_t length = 0;        ///< Two to this power bytes; for halves: which one, and Thumb or not.
  uint32_t target = 0;       ///< Else a section's number, from one.
  uint32_t subtrahend = 0;   ///< For differences: the address to subtract.
  uint16_t otherHalf = 0;    ///< For halves: the half that is not in the instruction.
};

/// Such as "ARM_RELOC_HALF"; an unknown kind is shown as a number.
std::string nameOf(macho::ArmRelocation kind);

/// A section's relocations, with pairs combined. Throws for kinds that the linker does not handle,
/// and for places outside a section of `sectionSize` bytes.
std::vector<Relocation> readRelocations(Reader file, uint32_t offset, uint32_t count,
                                        uint32_t sectionSize);

}  // namespace varnix::device
