// Words that receive the addresses of imports.
#include "macho/format.h"
#include "rules/fixups.h"
#include "rules/import_homes.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

/// Bound at load and lazily.
std::vector<BoundWord> allBound(const Fixups& fixups) {
  std::vector<BoundWord> words = fixups.binds.words;
  words.insert(words.end(), fixups.lazyBinds.words.begin(), fixups.lazyBinds.words.end());
  return words;
}

const std::vector<BoundWord>& boundAtOnce(const Fixups& fixups) { return fixups.binds.words; }

const SegmentCommand* segmentBound(const Fixups& fixups, const BoundWord& word) {
  return word.segment ? &fixups.image->segments[*word.segment] : nullptr;
}

bool isBoundInside(const Fixups& fixups, const BoundWord& word) {
  const SegmentCommand* segment = segmentBound(fixups, word);
  return segment != nullptr && word.address >= segment->address &&
         word.address + fixups.image->pointerSize() <= segment->end();
}

const LibraryCommand* libraryOf(const Fixups& fixups, const BoundWord& word) {
  const auto& libraries = fixups.image->libraries;
  const auto number = static_cast<uint64_t>(word.library);
  return number >= 1 && number <= libraries.size() ? &libraries[number - 1] : nullptr;
}

bool agrees(const Fixups& fixups, const BoundWord& word) {
  const auto found = fixups.imports.find(word.symbol);
  if (found == fixups.imports.end()) return false;
  const uint16_t description = found->second->description;
  return description >> 8 == (word.library & 0xff) &&
         ((description & macho::kWeakReference) != 0) == word.mayBeMissing();
}

/// Whether the library is known not to have the symbol.
bool isRefused(const Fixups& fixups, const BoundWord& word) {
  const LibraryCommand* library = libraryOf(fixups, word);
  if (library == nullptr || word.mayBeMissing()) return false;
  const auto offer = fixups.image->offers->find(library->name);
  return offer != fixups.image->offers->end() && offer->second.symbols &&
         !offer->second.symbols->contains(word.symbol);
}

/// Whether the symbol comes from the library that has symbols like it.
bool isAtHome(const Fixups& fixups, const BoundWord& word) {
  const std::string_view home = homeOf(word.symbol);
  const LibraryCommand* library = libraryOf(fixups, word);
  return home.empty() || (library != nullptr && library->name.ends_with(home));
}

void boundOnce(const Fixups& fixups, const Say& say) {
  for (const BoundWord& word : fixups.binds.words)
    if (fixups.boundAt.at(word.address) != &word) say(labelOf(word) + ": twice");
  for (const BoundWord& word : fixups.lazyBinds.words)
    if (fixups.lazilyBoundAt.at(word.address) != &word) say(labelOf(word) + ": twice");
}

constexpr FixupRule kBinds[] = {
    {"binds.opcodes", "Opcodes of binds are known and complete.",
     whole<[](const Fixups& fixups) { return fixups.binds.unknownOpcode; }>},
    {"binds.segment", "Binds choose segments that exist.", whole<[](const Fixups& fixups) {
       return fixups.binds.unknownSegment + fixups.lazyBinds.unknownSegment;
     }>},
    {"binds.type", "A bound word is a pointer.",
     each<allBound,
          [](const Fixups&, const BoundWord& word) {
            return unless(word.type == macho::kPointer, "type " + std::to_string(word.type));
          }>},
    {"binds.inside", "A bound word is in the chosen segment.",
     each<allBound,
          [](const Fixups& fixups, const BoundWord& word) {
            return unless(isBoundInside(fixups, word), "outside of it");
          }>},
    {"binds.writable", "A bound word is in a writable segment.",
     each<allBound,
          [](const Fixups& fixups, const BoundWord& word) {
            const SegmentCommand* segment = segmentBound(fixups, word);
            return unless(segment == nullptr || (segment->protection & macho::kWrite) != 0,
                          "its segment cannot be written to");
          }>},
    {"binds.symbol", "A bound word has a symbol.",
     each<allBound,
          [](const Fixups&, const BoundWord& word) {
            return unless(!word.symbol.empty(), "no symbol");
          }>},
    {"binds.library", "A bind names a linked library, or another place where the loader looks.",
     each<allBound,
          [](const Fixups& fixups, const BoundWord& word) {
            const bool isElsewhere =
                word.library <= macho::kSelf && word.library >= macho::kFlatLookup;
            return unless(isElsewhere || libraryOf(fixups, word) != nullptr,
                          "library " + std::to_string(word.library));
          }>},
    {"binds.once", "No word is bound twice.", boundOnce},
    {"binds.not-rebased", "No bound word is rebased too.",
     each<boundAtOnce,
          [](const Fixups& fixups, const BoundWord& word) {
            return unless(!fixups.isRebased(word.address), "it is");
          }>},
    {"binds.symbol-table", "The symbol table names the same library for an import.",
     each<allBound,
          [](const Fixups& fixups, const BoundWord& word) {
            return unless(agrees(fixups, word), "not so in the symbol table");
          }>},
    {"binds.offered", "The library of an import has it, if a stub says what the library has.",
     each<allBound,
          [](const Fixups& fixups, const BoundWord& word) {
            return unless(!isRefused(fixups, word),
                          "not offered by " + std::string(libraryOf(fixups, word) == nullptr
                                                              ? ""
                                                              : libraryOf(fixups, word)->name));
          }>},
    {"binds.home", "Symbols of the run-times of classes and blocks come from their libraries.",
     each<allBound,
          [](const Fixups& fixups, const BoundWord& word) {
            return unless(isAtHome(fixups, word), "not in " + std::string(homeOf(word.symbol)));
          }>},
    {"binds.not-weak", "No symbol is searched for in all images.", whole<[](const Fixups& fixups) {
       const uint32_t size = (*fixups.image->loaderInfo)[5];
       return unless(size == 0, std::to_string(size) + " bytes of weak binds");
     }>,
     Asker::project},
};

}  // namespace

std::span<const FixupRule> bindRules() { return kBinds; }

}  // namespace varnix::device
