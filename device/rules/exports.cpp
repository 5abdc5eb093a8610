// Names that other binaries may link.
#include <algorithm>

#include "macho/error.h"
#include "macho/format.h"
#include "rules/fixups.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

std::vector<SymbolEntry> offered(const Fixups& fixups) {
  std::vector<SymbolEntry> result;
  for (const SymbolEntry& symbol : fixups.symbols)
    if (symbol.isExport()) result.push_back(symbol);
  return result;
}

const std::vector<ExportEntry>& exportsOf(const Fixups& fixups) { return fixups.exports; }

const ExportEntry* entryOf(const Fixups& fixups, std::string_view name) {
  const auto found = std::ranges::find(fixups.exports, name, &ExportEntry::name);
  return found == fixups.exports.end() ? nullptr : &*found;
}

/// Searches as the loader does; the tree was read in another way.
bool isFound(const Fixups& fixups, const SymbolEntry& symbol) {
  const ExportEntry* entry = entryOf(fixups, symbol.name);
  if (entry == nullptr) return false;
  try {
    const auto found = findExport(fixups.exportTree, symbol.name);
    return found && found->flags == entry->terminal.flags &&
           found->offset == entry->terminal.offset;
  } catch (const Error&) {
    return false;
  }
}

const SymbolEntry* symbolOf(const Fixups& fixups, const ExportEntry& entry) {
  for (const SymbolEntry& symbol : fixups.symbols)
    if (symbol.isExport() && symbol.name == entry.name) return &symbol;
  return nullptr;
}

/// The tree counts from the header, at the start of the image.
uint64_t addressOf(const Fixups& fixups, const ExportEntry& entry) {
  const SegmentCommand* text = fixups.image->segment("__TEXT");
  return entry.terminal.offset + (text == nullptr ? 0 : text->address);
}

std::string pointsToSymbol(const Fixups& fixups, const ExportEntry& entry) {
  const SymbolEntry* symbol = symbolOf(fixups, entry);
  if (symbol == nullptr) return {};
  const uint64_t address = fixups.image->code(addressOf(fixups, entry));
  return unless(
      address == fixups.image->code(symbol->value) && fixups.image->sectionAt(address) != nullptr,
      hex(address) + ", but the symbol is at " + hex(symbol->value));
}

std::string hasThumbBit(const Fixups& fixups, const ExportEntry& entry) {
  const SymbolEntry* symbol = symbolOf(fixups, entry);
  if (fixups.image->is64 || symbol == nullptr) return {};
  const SectionHeader* section =
      fixups.image->sectionAt(fixups.image->code(addressOf(fixups, entry)));
  const bool isThumb = (symbol->description & macho::kArmThumb) != 0;
  const bool isCode = section != nullptr && (section->flags & macho::kPureInstructions) != 0;
  return unless((entry.terminal.offset & 1) == (isThumb ? 1u : 0u) && (!isCode || isThumb),
                hex(entry.terminal.offset) + (isThumb ? ", Thumb" : ", no Thumb"));
}

constexpr uint64_t kAllButKind = macho::kExportReexport | macho::kExportStubAndResolver | 4;

constexpr FixupRule kExports[] = {
    {"exports.tree", "The tree of exports is a tree, within its bytes.",
     whole<[](const Fixups& fixups) { return fixups.exportFault; }>},
    {"exports.found", "The loader finds each name that the symbol table exports.",
     each<offered,
          [](const Fixups& fixups, const SymbolEntry& symbol) {
            return unless(isFound(fixups, symbol), "not found");
          }>},
    {"exports.kind", "An export is a regular one, from this image.",
     each<exportsOf,
          [](const Fixups&, const ExportEntry& entry) {
            const uint64_t kind = entry.terminal.flags & macho::kExportKindMask;
            return unless((kind == 0 || kind == macho::kExportAbsolute) &&
                              (entry.terminal.flags & kAllButKind) == 0,
                          "kind " + hex(entry.terminal.flags));
          }>},
    {"exports.address", "An export's address is its symbol's, in a section.",
     each<exportsOf, pointsToSymbol>},
    {"exports.thumb", "A 32-bit function's export has the Thumb bit, and nothing else has it.",
     each<exportsOf, hasThumbBit>},
    {"exports.listed", "Everything exported is in the symbol table.",
     each<exportsOf,
          [](const Fixups& fixups, const ExportEntry& entry) {
            return unless(symbolOf(fixups, entry) != nullptr, "it is not");
          }>},
};

}  // namespace

std::span<const FixupRule> exportRules() { return kExports; }

}  // namespace varnix::device
