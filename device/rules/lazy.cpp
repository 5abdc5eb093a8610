// Pointers that are bound at first use: arm64 has them; our 32-bit linker makes none.
#include <algorithm>

#include "macho/format.h"
#include "rules/fixups.h"
#include "rules/stub_code.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

constexpr std::string_view kBinder = "dyld_stub_binder";

const std::vector<BoundWord>& lazilyBound(const Fixups& fixups) { return fixups.lazyBinds.words; }

const SectionHeader* helpersOf(const Fixups& fixups) {
  return fixups.image->section("__stub_helper");
}

bool isBinder(const Fixups& fixups, const BoundWord& word) {
  const auto& libraries = fixups.image->libraries;
  return word.symbol == kBinder && word.library >= 1 &&
         static_cast<uint64_t>(word.library) <= libraries.size() &&
         libraries[static_cast<size_t>(word.library) - 1].name == kSystemLibrary;
}

std::string binderIsBound(const Fixups& fixups) {
  if (fixups.lazyBinds.words.empty()) return {};
  if (!std::ranges::any_of(fixups.binds.words,
                           [&](const BoundWord& word) { return isBinder(fixups, word); }))
    return std::string(kBinder) + " is not bound to the system's library";
  if (!fixups.image->is64) return {};
  const auto common = readCommonHelper(*fixups.image);
  if (!common) return "the helpers do not begin with the code that calls it";
  const BoundWord* word = fixups.bound(common->binder);
  return unless(word != nullptr && word->symbol == kBinder,
                "the helpers take it from " + hex(common->binder) + ", where it is not");
}

std::string cacheIsZero(const Fixups& fixups) {
  if (fixups.lazyBinds.words.empty() || !fixups.image->is64) return {};
  const auto common = readCommonHelper(*fixups.image);
  if (!common) return {};
  const SegmentCommand* segment = fixups.image->segmentAt(common->cache);
  return unless(segment != nullptr && (segment->protection & macho::kWrite) != 0 &&
                    common->cache % 8 == 0 && fixups.image->word(common->cache) == 0 &&
                    !fixups.isRebased(common->cache),
                "the word at " + hex(common->cache));
}

std::string helperFits(const Fixups& fixups, const BoundWord& word) {
  const SectionHeader* helpers = helpersOf(fixups);
  if (helpers == nullptr) return "there are no helpers";
  if (!fixups.image->is64) return {};
  const auto pointer = fixups.image->word(word.address);
  if (!pointer || !helpers->contains(*pointer)) return "points to no helper";
  const auto helper = readHelper(*fixups.image, *pointer);
  return unless(helper && helper->target == helpers->address && helper->stream == word.stream,
                "its helper at " + hex(*pointer) + " does not ask for it");
}

std::string everyLazyPointerIsBound(const Fixups& fixups) {
  if (!fixups.lazyBinds.words.empty()) return {};
  return unless(std::ranges::none_of(fixups.image->sections,
                                     [](const SectionHeader& section) {
                                       return section.type() == macho::kLazySymbolPointers &&
                                              section.size != 0;
                                     }),
                "lazy pointers, but no lazy binds");
}

constexpr FixupRule kLazy[] = {
    {"lazy.opcodes", "Opcodes of lazy binds are known, complete and allowed there.",
     whole<[](const Fixups& fixups) { return fixups.lazyBinds.unknownOpcode; }>},
    {"lazy.streams", "Each lazy bind ends, and binds something.", whole<[](const Fixups& fixups) {
       const auto& empty = fixups.lazyBinds.emptyStreams;
       if (!fixups.lazyBinds.isEnded) return std::string("the last one has no end");
       return unless(empty.empty(), empty.empty() ? "" : hex(empty[0]) + " binds nothing");
     }>},
    {"lazy.must-be-there", "No import that may be missing is bound lazily.",
     each<lazilyBound,
          [](const Fixups&, const BoundWord& word) {
            return unless(!word.mayBeMissing(), "may be missing");
          }>,
     Asker::project},
    {"lazy.rebased", "A lazy pointer is rebased, since it points to its helper until it is bound.",
     each<lazilyBound,
          [](const Fixups& fixups, const BoundWord& word) {
            return unless(fixups.isRebased(word.address), "it is not");
          }>},
    {"lazy.info", "If there are lazy pointers, there are lazy binds.",
     whole<everyLazyPointerIsBound>},
    {"lazy.helper", "A lazy pointer's helper passes the offset of that pointer's bind.",
     each<lazilyBound, helperFits>},
    {"lazy.binder", "The helpers call the system's binder.", whole<binderIsBound>},
    {"lazy.cache", "The word for the binder's own use is zero and writable.", whole<cacheIsZero>},
};

}  // namespace

std::span<const FixupRule> lazyRules() { return kLazy; }

}  // namespace varnix::device
