// Stubs of called functions, and the table that names the symbols of stubs and pointers.
#include "macho/format.h"
#include "rules/fixups.h"
#include "rules/stub_code.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

bool hasIndirect(const SectionHeader& section) {
  return section.type() == macho::kNonLazySymbolPointers ||
         section.type() == macho::kLazySymbolPointers || section.type() == macho::kSymbolStubs;
}

uint64_t entrySize(const Image& image, const SectionHeader& section) {
  return section.type() == macho::kSymbolStubs ? section.stubSize : image.pointerSize();
}

uint64_t entryCount(const Image& image, const SectionHeader& section) {
  const uint64_t size = entrySize(image, section);
  return size == 0 ? 0 : section.size / size;
}

uint64_t tableSize(const Image& image) { return image.indirectSymbols->size / 4; }

const std::vector<SectionHeader>& allOfSections(const Fixups& fixups) {
  return fixups.image->sections;
}

/// The symbol's index for an entry of a section; none if the entry names no symbol.
std::optional<uint32_t> indirectSymbol(const Image& image, const SectionHeader& section,
                                       uint64_t entry) {
  const uint32_t index =
      image.bytes.u32(image.indirectSymbols->offset + 4 * (section.firstIndirect + entry));
  if (index >= macho::kIndirectAbsolute) return std::nullopt;
  return index;
}

std::string entriesAreThere(const Fixups& fixups, const SectionHeader& section) {
  const Image& image = *fixups.image;
  if (!hasIndirect(section)) return {};
  if (entrySize(image, section) == 0) return "stubs without a size";
  const uint64_t count = entryCount(image, section);
  if (section.firstIndirect + count > tableSize(image)) return "leaves the table";
  for (uint64_t i = 0; i < count; ++i)
    if (const auto symbol = indirectSymbol(image, section, i);
        symbol && *symbol >= fixups.symbols.size())
      return "entry " + std::to_string(i) + " names symbol " + std::to_string(*symbol);
  return {};
}

const BoundWord* boundBehind(const Fixups& fixups, const SectionHeader& section, uint64_t entry) {
  const uint64_t address = section.address + entry * entrySize(*fixups.image, section);
  const auto lazily = [&](uint64_t at) {
    const auto found = fixups.lazilyBoundAt.find(at);
    return found == fixups.lazilyBoundAt.end() ? nullptr : found->second;
  };
  if (section.type() == macho::kLazySymbolPointers) return lazily(address);
  if (section.type() == macho::kNonLazySymbolPointers) return fixups.bound(address);
  const auto pointer = readStub(*fixups.image, address);
  if (!pointer) return nullptr;
  const BoundWord* word = lazily(*pointer);
  return word != nullptr ? word : fixups.bound(*pointer);
}

std::string entriesAreBound(const Fixups& fixups, const SectionHeader& section) {
  if (!hasIndirect(section) || !entriesAreThere(fixups, section).empty()) return {};
  for (uint64_t i = 0; i < entryCount(*fixups.image, section); ++i) {
    const auto symbol = indirectSymbol(*fixups.image, section, i);
    if (!symbol) continue;
    const std::string_view name = fixups.symbols[*symbol].name;
    const BoundWord* word = boundBehind(fixups, section, i);
    if (word == nullptr || word->symbol != name)
      return "entry " + std::to_string(i) + " is to be " + printable(name) + " and is " +
             (word == nullptr ? "not bound" : printable(word->symbol));
  }
  return {};
}

constexpr FixupRule kStubs[] = {
    {"stubs.table", "Stubs and pointers have entries in the table of indirect symbols.",
     each<allOfSections, entriesAreThere>},
    {"stubs.target", "A stub jumps through a pointer that is bound to the stub's symbol.",
     each<allOfSections, entriesAreBound>},
};

}  // namespace

std::span<const FixupRule> stubRules() { return kStubs; }

}  // namespace varnix::device
