#include "linker/relocation.h"

#include <array>
#include <cstdio>

#include "macho/error.h"

namespace varnix::device {
namespace {

constexpr std::array kNames{"ARM_RELOC_VANILLA",    "ARM_RELOC_PAIR",
                            "ARM_RELOC_SECTDIFF",   "ARM_RELOC_LOCAL_SECTDIFF",
                            "ARM_RELOC_PB_LA_PTR",  "ARM_RELOC_BR24",
                            "ARM_THUMB_RELOC_BR22", "ARM_THUMB_32BIT_BRANCH",
                            "ARM_RELOC_HALF",       "ARM_RELOC_HALF_SECTDIFF"};

[[noreturn]] void refuse(const Relocation& relocation, const std::string& reason) {
  char place[16];
  std::snprintf(place, sizeof place, "0x%x", relocation.offset);
  throw Error(nameOf(relocation.kind) + " at " + place + ": " + reason);
}

/// One entry: eight bytes, in one of two shapes.
Relocation readOne(Reader file, uint64_t at) {
  const uint32_t first = file.u32(at), second = file.u32(at + 4);
  Relocation relocation;
  if ((first & 0x80000000) != 0) {
    relocation.isScattered = true;
    relocation.isPcRelative = (first >> 30 & 1) != 0;
    relocation.length = first >> 28 & 3;
    relocation.kind = static_cast<macho::ArmRelocation>(first >> 24 & 15);
    relocation.offset = first & 0xffffff;
    relocation.target = second;
  } else {
    relocation.offset = first;
    relocation.target = second & 0xffffff;
    relocation.isPcRelative = (second >> 24 & 1) != 0;
    relocation.length = second >> 25 & 3;
    relocation.isExternal = (second >> 27 & 1) != 0;
    relocation.kind = static_cast<macho::ArmRelocation>(second >> 28);
  }
  return relocation;
}

bool isDifference(macho::ArmRelocation kind) {
  return kind == macho::kSectionDifference || kind == macho::kLocalSectionDifference ||
         kind == macho::kHalfSectionDifference;
}

/// Reports what the linker does not support, before it does anything.
void check(const Relocation& relocation, uint32_t sectionSize) {
  switch (relocation.kind) {
    case macho::kVanilla:
    case macho::kSectionDifference:
    case macho::kLocalSectionDifference:
      if (relocation.isPcRelative) refuse(relocation, "relative to the place itself");
      if (relocation.length != 2) refuse(relocation, "not four bytes long");
      break;
    case macho::kThumbBranch22:
      if (relocation.isScattered) refuse(relocation, "a branch past its symbol");
      if (!relocation.isPcRelative || relocation.length != 2) refuse(relocation, "not a branch");
      break;
    case macho::kHalfSectionDifference:
      if ((relocation.length & 2) == 0)
        refuse(relocation, "Arm instructions; compile with -mthumb");
      break;
    case macho::kHalf:
      refuse(relocation, "code that holds an address; compile position-independent");
    case macho::kBranch24:
      refuse(relocation, "Arm instructions; compile with -mthumb");
    case macho::kPair:
      refuse(relocation, "a second half without a first");
    default:
      refuse(relocation, "not handled");
  }
  if (isDifference(relocation.kind) && !relocation.isScattered)
    refuse(relocation, "a difference of symbols");
  if (sectionSize < 4 || relocation.offset > sectionSize - 4)
    refuse(relocation, "outside its section");
}

}  // namespace

std::string nameOf(macho::ArmRelocation kind) {
  return kind < kNames.size() ? kNames[kind] : "relocation kind " + std::to_string(kind);
}

std::vector<Relocation> readRelocations(Reader file, uint32_t offset, uint32_t count,
                                        uint32_t sectionSize) {
  const Reader table = file.part(offset, uint64_t{count} * macho::kRelocationSize);
  std::vector<Relocation> relocations;
  for (uint32_t i = 0; i < count; ++i) {
    Relocation relocation = readOne(table, uint64_t{i} * macho::kRelocationSize);
    check(relocation, sectionSize);
    if (isDifference(relocation.kind)) {
      if (++i == count) refuse(relocation, "the second half is missing");
      const Relocation pair = readOne(table, uint64_t{i} * macho::kRelocationSize);
      if (pair.kind != macho::kPair || !pair.isScattered)
        refuse(relocation, "the second half is missing");
      relocation.subtrahend = pair.target;
      relocation.otherHalf = static_cast<uint16_t>(pair.offset);
    }
    relocations.push_back(relocation);
  }
  return relocations;
}

}  // namespace varnix::device
