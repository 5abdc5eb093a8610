// A slice as its header and load commands describe it. None of that is trusted.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "macho/bytes.h"
#include "macho/commands.h"

namespace varnix::device {

/// What is known about a library that others link.
struct Offer {
  std::optional<uint32_t> compatibilityVersion;  ///< 1.0 is 0x00010000.
  std::optional<std::set<std::string, std::less<>>> symbols;
};
/// By install names.
using Offers = std::map<std::string, Offer, std::less<>>;

struct SegmentCommand {
  std::string_view name;
  uint64_t address = 0, size = 0, fileOffset = 0, fileSize = 0;
  uint32_t maxProtection = 0, protection = 0;

  uint64_t end() const { return address + size; }
  /// Whether an address is inside, and inside the part that is in the file.
  bool contains(uint64_t place) const { return place >= address && place - address < size; }
  bool isFilled(uint64_t place) const { return place >= address && place - address < fileSize; }
};

struct SectionHeader {
  std::string_view name, segmentName;
  uint64_t address = 0, size = 0;
  uint32_t offset = 0, alignment = 0, relocationCount = 0, flags = 0;
  uint32_t firstIndirect = 0, stubSize = 0;
  size_t segment = 0;  ///< Its index.

  uint8_t type() const { return static_cast<uint8_t>(flags); }
  bool isZeros() const;
  bool contains(uint64_t place) const { return place >= address && place - address < size; }
};

struct LibraryCommand {
  uint32_t index = 0;
  std::string_view name;  ///< Empty if the command has none.
  uint32_t compatibilityVersion = 0;
};

/// A table that a load command points to.
struct LinkTable {
  std::string_view name;
  uint64_t offset = 0, size = 0;
};

struct Image {
  Reader bytes;
  uint64_t offset = 0;    ///< Of the slice, within its file.
  uint64_t fileSize = 0;  ///< Of the whole file.
  const Offers* offers = nullptr;

  bool is64 = false;
  uint32_t processor = 0, subtype = 0, type = 0, commandRoom = 0, flags = 0;

  std::vector<LoadCommand> commands;
  std::optional<CommandError> commandFault;  ///< What kept the rest from being read.
  std::vector<SegmentCommand> segments;
  std::vector<SectionHeader> sections;
  std::vector<LibraryCommand> libraries;
  std::optional<std::string_view> installName;
  std::optional<uint32_t> minimumVersion;
  /// Offsets and sizes: rebases, binds, weak binds, lazy binds, exports.
  std::optional<std::array<uint32_t, 10>> loaderInfo;
  /// Symbols, their number, names, their size.
  std::optional<std::array<uint32_t, 4>> symbolTable;
  std::optional<LinkTable> indirectSymbols;
  uint64_t relocations = 0;           ///< Of the image as a whole, in the old form.
  std::vector<LinkTable> linkTables;  ///< Of commands that have one table each.
  std::vector<LinkTable> signatures;

  uint64_t pointerSize() const { return is64 ? 8 : 4; }
  uint64_t headerSize() const { return is64 ? 32 : 28; }
  uint64_t addressMask() const { return is64 ? ~uint64_t{0} : 0xffffffff; }
  /// Nil if there is none.
  const SegmentCommand* segmentAt(uint64_t address) const;
  const SegmentCommand* segment(std::string_view name) const;
  const SectionHeader* sectionAt(uint64_t address) const;
  const SectionHeader* section(std::string_view name) const;
  /// The file's offset of what is at an address.
  std::optional<uint64_t> place(uint64_t address) const;
  /// A word of the image's width; nothing if the file has none there.
  std::optional<uint64_t> word(uint64_t address) const;
  /// An instruction's address without the Thumb bit.
  uint64_t code(uint64_t address) const { return is64 ? address : address & ~uint64_t{1}; }
  /// Whether an address, with or without the Thumb bit, is in executable code.
  bool holdsFunctions(uint64_t address) const;
  /// A dynamic library rather than a bundle.
  bool isDylib() const;
};

/// Reads a header, whose magic must be known, and then load commands up to the first invalid one.
/// Throws Error if a command is too short for its kind.
void readHeader(Image& image);
void readCommands(Image& image);

inline std::string labelOf(const LoadCommand& command) {
  return "load command #" + std::to_string(command.index);
}
inline std::string labelOf(const SegmentCommand& segment) { return std::string(segment.name); }
inline std::string labelOf(const SectionHeader& section) {
  return std::string(section.segmentName) + "," + std::string(section.name);
}
inline std::string labelOf(const LibraryCommand& library) {
  return library.name.empty() ? "library #" + std::to_string(library.index)
                              : std::string(library.name);
}
inline std::string labelOf(const LinkTable& table) { return std::string(table.name); }

}  // namespace varnix::device
