#include "linker/object.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {
namespace {

/// Kinds of sections that are copied into the library unchanged.
constexpr std::array kSectionTypes{macho::kRegular,
                                   macho::kZeroFill,
                                   macho::kCstringLiterals,
                                   macho::k4ByteLiterals,
                                   macho::k8ByteLiterals,
                                   macho::k16ByteLiterals,
                                   macho::kLiteralPointers,
                                   macho::kNonLazySymbolPointers,
                                   macho::kModInitFuncPointers};

std::string hexadecimal(uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%x", value);
  return text;
}

bool isKnown(uint32_t type) {
  for (const uint32_t known : kSectionTypes)
    if (type == known) return true;
  return false;
}

void checkSection(const Section& section) {
  const std::string where = "section " + section.title();
  if (section.segment != "__TEXT" && section.segment != "__DATA")
    throw Error(where + ": only __TEXT and __DATA can be linked");
  if (!isKnown(section.type()))
    throw Error(where + ": type " + std::to_string(section.type()) + " is not handled");
  if (section.alignment > 14) throw Error(where + ": aligned to more than a page");
  if (uint64_t{section.address} + section.size > 0xffffffff)
    throw Error(where + ": ends outside the address space");
  const bool isZeros = section.type() == macho::kZeroFill;
  if (isZeros && (!section.relocations.empty() || section.segment != "__DATA"))
    throw Error(where + ": zeros that are not plain data");
  // A difference stays the same wherever the library lies, as in a table of exception handlers.
  const auto isAddress = [](const Relocation& each) { return each.kind == macho::kVanilla; };
  if (section.segment == "__TEXT" && !section.hasCode() &&
      std::ranges::any_of(section.relocations, isAddress))
    throw Error(where + ": constant data that holds an address belongs into __DATA");
}

Section readSection(Reader file, uint64_t at) {
  Section section;
  section.name = file.fixedText(at, 16);
  section.segment = file.fixedText(at + 16, 16);
  section.address = file.u32(at + 32);
  section.size = file.u32(at + 36);
  section.alignment = file.u32(at + 44);
  section.flags = file.u32(at + 56);
  // A protocol is in every object that names it. There is one object, so nothing is left to join.
  if (section.type() == macho::kCoalesced) section.flags &= ~macho::kSectionTypeMask;
  section.firstIndirect = file.u32(at + 60);
  if (section.type() != macho::kZeroFill)
    section.content = file.at(file.u32(at + 40), section.size);
  try {
    section.relocations = readRelocations(file, file.u32(at + 48), file.u32(at + 52), section.size);
  } catch (const Error& error) {
    throw Error("section " + section.title() + ": " + error.what());
  }
  checkSection(section);
  return section;
}

void readSegment(Reader file, Reader command, Object& object) {
  const uint32_t count = command.u32(48);
  // A section's number is one byte.
  if (count + object.sections.size() > 255) throw Error("more than 255 sections");
  for (uint32_t i = 0; i < count; ++i) {
    const uint64_t at = macho::kSegmentSize + uint64_t{i} * macho::kSectionSize;
    command.at(at, macho::kSectionSize);
    const auto offset = static_cast<uint64_t>(command.at(at, 0).data() - file.at(0, 0).data());
    object.sections.push_back(readSection(file, offset));
  }
}

void readSymbols(Reader file, Reader command, Object& object) {
  const uint32_t count = command.u32(12);
  const Reader table = file.part(command.u32(8), uint64_t{count} * macho::kNlistSize);
  const Reader names = file.part(command.u32(16), command.u32(20));
  for (uint64_t at = 0; at < table.size(); at += macho::kNlistSize) {
    Symbol symbol;
    symbol.name = names.text(table.u32(at));
    symbol.type = table.u8(at + 4);
    symbol.section = table.u8(at + 5);
    symbol.description = table.u16(at + 6);
    symbol.value = table.u32(at + 8);
    object.symbols.push_back(symbol);
  }
}

void readIndirect(Reader file, Reader command, Object& object) {
  const uint32_t count = command.u32(60);
  const Reader table = file.part(command.u32(56), uint64_t{count} * 4);
  for (uint32_t i = 0; i < count; ++i) object.indirect.push_back(table.u32(uint64_t{i} * 4));
}

void readDataInCode(Reader file, Reader command, Object& object) {
  const Reader table = file.part(command.u32(8), command.u32(12));
  for (uint64_t at = 0; at < table.size(); at += macho::kDataInCodeSize)
    object.dataInCode.push_back({table.u32(at), table.u16(at + 4), table.u16(at + 6)});
}

/// Checked after everything is read, because load commands come in any order.
void checkSymbol(const Symbol& symbol, const Object& object) {
  const std::string name(symbol.name);
  if ((symbol.type & macho::kStabMask) != 0) throw Error(name + ": compile without -g");
  if (symbol.isUndefined()) {
    if (symbol.value != 0) throw Error(name + ": compile with -fno-common");
    if ((symbol.type & macho::kExternal) == 0) throw Error(name + ": undefined, yet not external");
  } else if (!symbol.isDefined()) {
    throw Error(name + ": neither undefined nor in a section");
  } else if (symbol.section == 0 || symbol.section > object.sections.size()) {
    throw Error(name + ": in no section");
  } else {
    const Section& section = object.sections[symbol.section - 1u];
    if (symbol.value < section.address || symbol.value - section.address > section.size)
      throw Error(name + ": outside its section");
    if (section.hasCode() && !symbol.isThumb())
      throw Error(name + ": code that is not Thumb; compile with -mthumb");
  }
}

void checkIndirect(const Object& object) {
  for (const Section& section : object.sections) {
    if (section.type() != macho::kNonLazySymbolPointers) continue;
    const uint64_t end = uint64_t{section.firstIndirect} + section.size / 4;
    if (end > object.indirect.size() || section.size % 4 != 0)
      throw Error("section " + section.title() + ": pointers without symbols");
  }
  for (const uint32_t index : object.indirect)
    if (index != macho::kIndirectLocal && index >= object.symbols.size())
      throw Error("no such indirect symbol: " + hexadecimal(index));
}

void checkReferences(const Object& object) {
  for (const Section& section : object.sections)
    for (const Relocation& relocation : section.relocations) {
      const bool isSection = !relocation.isExternal && !relocation.isScattered;
      if ((relocation.isExternal && relocation.target >= object.symbols.size()) ||
          (isSection && (relocation.target == 0 || relocation.target > object.sections.size())))
        throw Error("section " + section.title() + ": " + nameOf(relocation.kind) + " at " +
                    hexadecimal(relocation.offset) + ": its target is not there");
    }
}

}  // namespace

uint32_t Section::type() const { return flags & macho::kSectionTypeMask; }

bool Section::hasCode() const {
  return (flags & (macho::kPureInstructions | macho::kSomeInstructions)) != 0;
}

bool Symbol::isUndefined() const { return (type & macho::kTypeMask) == macho::kUndefined; }
bool Symbol::isDefined() const { return (type & macho::kTypeMask) == macho::kInSection; }
bool Symbol::isExternal() const {
  return (type & macho::kExternal) != 0 && (type & macho::kPrivateExternal) == 0;
}
bool Symbol::isThumb() const { return (description & macho::kArmThumb) != 0; }

size_t Object::sectionAt(uint32_t address) const {
  std::optional<size_t> ending;
  for (size_t i = 0; i < sections.size(); ++i) {
    const uint32_t offset = address - sections[i].address;
    if (address >= sections[i].address && offset < sections[i].size) return i;
    if (address >= sections[i].address && offset == sections[i].size && !ending) ending = i;
  }
  if (!ending) throw Error("no section has the address " + hexadecimal(address));
  return *ending;
}

Object readObject(Reader file) {
  if (file.u32(0) != macho::kMagic32 || file.u32(4) != macho::kCpuArm ||
      (file.u32(8) & 0xffffff) != macho::kSubtypeArmV7 || file.u32(12) != macho::kObject)
    throw Error("not an object file for armv7");
  Object object;
  const uint32_t count = file.u32(16);
  const Reader commands = file.part(macho::kHeaderSize32, file.u32(20));
  uint64_t at = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t size = commands.u32(at + 4);
    if (size < 8) throw Error("a load command is shorter than its head");
    const Reader command = commands.part(at, size);
    switch (command.u32(0)) {
      case macho::kSegment:
        readSegment(file, command, object);
        break;
      case macho::kSymtab:
        readSymbols(file, command, object);
        break;
      case macho::kDysymtab:
        readIndirect(file, command, object);
        break;
      case macho::kDataInCode:
        readDataInCode(file, command, object);
        break;
      case macho::kVersionMinIphoneos:
        object.minimumVersion = command.u32(8);
        break;
      default:
        throw Error("load command " + hexadecimal(command.u32(0)) + " is not handled");
    }
    at += size;
  }
  if (object.minimumVersion == 0) throw Error("the object does not say its minimum version");
  for (const Symbol& symbol : object.symbols) checkSymbol(symbol, object);
  checkIndirect(object);
  checkReferences(object);
  return object;
}

}  // namespace varnix::device
