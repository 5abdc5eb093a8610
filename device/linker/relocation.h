// One place in an object file that depends on where things end up.
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
  uint8_t length = 0;        ///< Two to this power bytes; of halves: which one, and Thumb or not.
  uint32_t target = 0;       ///< Else a section's number, from one.
  uint32_t subtrahend = 0;   ///< Of differences: the address that is taken away.
  uint16_t otherHalf = 0;    ///< Of halves: the half that is not in the instruction.
};

/// As "ARM_RELOC_HALF"; a number that is no kind is shown as such.
std::string nameOf(macho::ArmRelocation kind);

/// A section's relocations, each pair made one. Throws for kinds that the linker does not handle,
/// and for places outside a section of `sectionSize` bytes.
std::vector<Relocation> readRelocations(Reader file, uint32_t offset, uint32_t count,
                                        uint32_t sectionSize);

}  // namespace varnix::device
