// An object file for 32-bit Arm in memory. The views point into the file's bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "linker/relocation.h"
#include "macho/bytes.h"

namespace varnix::device {

struct Section {
  std::string segment, name;
  uint32_t address = 0, size = 0;
  uint32_t alignment = 0;  ///< The power of two.
  uint32_t flags = 0;
  uint32_t firstIndirect = 0;        ///< Of symbol pointers: its first entry in Object::indirect.
  std::span<const uint8_t> content;  ///< Empty for zeros.
  std::vector<Relocation> relocations;

  uint32_t type() const;
  bool hasCode() const;
  std::string title() const { return segment + "," + name; }
};

struct Symbol {
  std::string_view name;
  uint8_t type = 0;
  uint8_t section = 0;  ///< From one; zero for none.
  uint16_t description = 0;
  uint32_t value = 0;

  bool isUndefined() const;
  bool isDefined() const;
  /// Seen by other binaries if the list of exports names it.
  bool isExternal() const;
  bool isThumb() const;
};

/// Data among instructions, such as a jump table.
struct DataInCode {
  uint32_t address = 0;
  uint16_t length = 0, kind = 0;
};

struct Object {
  uint32_t minimumVersion = 0;  ///< As in the load command: 9.3 is 0x00090300.
  std::vector<Section> sections;
  std::vector<Symbol> symbols;
  std::vector<uint32_t> indirect;  ///< Indices of symbols.
  std::vector<DataInCode> dataInCode;

  /// The number of the section, from zero, that contains an address. Its end counts as inside if no
  /// other section begins there. Throws if there is none.
  size_t sectionAt(uint32_t address) const;
};

/// Throws Error for anything that the linker does not handle.
Object readObject(Reader file);

}  // namespace varnix::device
