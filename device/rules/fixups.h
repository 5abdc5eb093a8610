// What the loader must write into the image, and the names that go with it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "macho/export_tree.h"
#include "rules/image.h"

namespace varnix::device {

/// A word that moves with the image.
struct RebasedWord {
  uint64_t address = 0;
  std::optional<size_t> segment;  ///< The one that the opcodes chose.
  uint8_t type = 0;
};

/// A word that gets an import's address.
struct BoundWord {
  uint64_t address = 0;
  std::optional<size_t> segment;
  uint8_t type = 0;
  int64_t library = 0;
  std::string_view symbol;
  uint8_t flags = 0;
  int64_t addend = 0;
  bool isLazy = false;
  uint64_t stream = 0;  ///< Of a lazy one: where its opcodes begin.

  bool mayBeMissing() const;
};

/// Words in the order of their opcodes, up to the one that stopped the loader.
template <class Word>
struct FixupWalk {
  std::vector<Word> words;
  std::string unknownOpcode, unknownSegment;  ///< What is wrong, or nothing.
  /// Of lazy binds.
  bool isEnded = true;
  std::vector<uint64_t> emptyStreams;
};

struct SymbolEntry {
  std::string_view name;
  uint8_t type = 0;
  uint16_t description = 0;
  uint64_t value = 0;

  bool isImport() const;
  bool isExport() const;
};

struct ExportEntry {
  std::string name;
  ExportTerminal terminal;
};

/// Parts of the image, which must stay alive.
struct Fixups {
  const Image* image = nullptr;
  FixupWalk<RebasedWord> rebases;
  FixupWalk<BoundWord> binds, lazyBinds;
  std::map<uint64_t, const RebasedWord*> rebasedAt;
  std::map<uint64_t, const BoundWord*> boundAt, lazilyBoundAt;
  std::vector<SymbolEntry> symbols;
  std::map<std::string_view, const SymbolEntry*> imports;
  Reader exportTree;
  std::vector<ExportEntry> exports;
  std::string exportFault;  ///< What is wrong with the tree, or nothing.

  const BoundWord* bound(uint64_t address) const;
  bool isRebased(uint64_t address) const { return rebasedAt.contains(address); }
};

/// Throws Error if a table leaves the file.
Fixups readFixups(const Image& image);

std::string labelOf(const RebasedWord& word);
std::string labelOf(const BoundWord& word);
inline std::string labelOf(const SymbolEntry& symbol) { return std::string(symbol.name); }
inline std::string labelOf(const ExportEntry& entry) { return entry.name; }

}  // namespace varnix::device
