// Functions that run at load, and the lists that the Objective-C run-time reads first.
#include <algorithm>

#include "macho/format.h"
#include "rules/fixups.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

struct Initialiser {
  uint64_t place = 0;
  std::optional<uint64_t> function;
};

std::string labelOf(const Initialiser& initialiser) { return hex(initialiser.place); }

bool runsAtLoad(const SectionHeader& section) {
  return section.type() == macho::kModInitFuncPointers;
}

std::vector<Initialiser> initialisers(const Fixups& fixups) {
  const Image& image = *fixups.image;
  std::vector<Initialiser> result;
  for (const SectionHeader& section : image.sections) {
    if (!runsAtLoad(section)) continue;
    // Another rule reports a section that is longer than the file.
    for (uint64_t at = 0; section.size - at >= image.pointerSize() && at < section.size;
         at += image.pointerSize()) {
      result.push_back({section.address + at, image.word(section.address + at)});
      if (!result.back().function) break;
    }
  }
  return result;
}

const std::vector<SectionHeader>& allSections(const Fixups& fixups) {
  return fixups.image->sections;
}

/// A list of pointers that the Objective-C run-time reads.
bool isClassList(const SectionHeader& section) {
  return section.segmentName == "__DATA" && section.name.starts_with("__objc_") &&
         section.name.ends_with("list");
}

std::string listIsFixed(const Fixups& fixups, const SectionHeader& section) {
  if (!isClassList(section)) return {};
  const uint64_t size = fixups.image->pointerSize();
  for (uint64_t at = 0; at + size <= section.size; at += size)
    if (const uint64_t address = section.address + at;
        !fixups.isRebased(address) && fixups.bound(address) == nullptr)
      return "the word at " + hex(address) + " is not";
  return {};
}

constexpr FixupRule kInitialisers[] = {
    {"initialisers.present", "A library has an initialiser, and its section says what it is.",
     whole<[](const Fixups& fixups) {
       const SectionHeader* named = fixups.image->section("__mod_init_func");
       if (named != nullptr && !runsAtLoad(*named))
         return "section type " + std::to_string(named->type()) + " is ignored";
       return unless(
           !fixups.image->isDylib() || std::ranges::any_of(fixups.image->sections, runsAtLoad),
           "none");
     }>,
     Asker::project},
    {"initialisers.size", "A section of initialisers holds whole, aligned words.",
     each<allSections,
          [](const Fixups& fixups, const SectionHeader& section) {
            const uint64_t size = fixups.image->pointerSize();
            return unless(!runsAtLoad(section) || (section.size != 0 && section.size % size == 0 &&
                                                   section.address % size == 0),
                          hex(section.size) + " bytes at " + hex(section.address));
          }>},
    {"initialisers.rebased", "An initialiser's word is rebased.",
     each<initialisers,
          [](const Fixups& fixups, const Initialiser& it) {
            return unless(fixups.isRebased(it.place), "it is not");
          }>},
    {"initialisers.code", "An initialiser is a function in this image.",
     each<initialisers,
          [](const Fixups& fixups, const Initialiser& it) {
            return unless(it.function && fixups.image->holdsFunctions(*it.function),
                          it.function ? "points to " + hex(*it.function) : "no word of the file");
          }>},
    {"initialisers.entry",
     "A 32-bit initialiser has the Thumb bit; a 64-bit one is aligned to instructions.",
     each<initialisers,
          [](const Fixups& fixups, const Initialiser& it) {
            const uint64_t low = it.function.value_or(1) & 3;
            return unless(fixups.image->is64 ? low == 0 : (low & 1) == 1,
                          "enters " + hex(it.function.value_or(0)));
          }>},
    {"initialisers.no-terminator",
     "Nothing is to run when the image is unloaded, since it never is.",
     each<allSections,
          [](const Fixups&, const SectionHeader& section) {
            return unless(section.type() != macho::kModTermFuncPointers, "functions that end it");
          }>,
     Asker::project},
    {"class-lists.size", "The lists of classes hold whole, aligned words.",
     each<allSections,
          [](const Fixups& fixups, const SectionHeader& section) {
            const uint64_t size = fixups.image->pointerSize();
            return unless(
                !isClassList(section) || (section.address % size == 0 && section.size % size == 0),
                hex(section.size) + " bytes at " + hex(section.address));
          }>},
    {"class-lists.fixed", "Each word in the lists of classes is rebased or bound.",
     each<allSections, listIsFixed>},
};

}  // namespace

std::span<const FixupRule> initialiserRules() { return kInitialisers; }

}  // namespace varnix::device
