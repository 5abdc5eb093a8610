// Words that move with the image.
#include "macho/format.h"
#include "rules/fixups.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

const std::vector<RebasedWord>& rebased(const Fixups& fixups) { return fixups.rebases.words; }

bool isRebasedInside(const Image& image, const RebasedWord& word) {
  if (!word.segment) return false;
  const SegmentCommand& segment = image.segments[*word.segment];
  return word.address >= segment.address && word.address + image.pointerSize() <= segment.end();
}

bool isInImage(const Image& image, uint64_t address) {
  // A pointer to the end of a segment's last item is outside the segment, but valid.
  return image.segmentAt(image.code(address)) != nullptr ||
         (address != 0 && image.segmentAt(address - 1) != nullptr);
}

constexpr FixupRule kRebases[] = {
    {"rebases.opcodes", "Opcodes of rebases are known and complete.",
     whole<[](const Fixups& fixups) { return fixups.rebases.unknownOpcode; }>},
    {"rebases.segment", "Rebases choose segments that exist.",
     whole<[](const Fixups& fixups) { return fixups.rebases.unknownSegment; }>},
    {"rebases.type", "A rebased word is a pointer.",
     each<rebased,
          [](const Fixups&, const RebasedWord& word) {
            return unless(word.type == macho::kPointer, "type " + std::to_string(word.type));
          }>},
    {"rebases.inside", "A rebased word is in the chosen segment.",
     each<rebased,
          [](const Fixups& fixups, const RebasedWord& word) {
            return unless(isRebasedInside(*fixups.image, word), "outside of it");
          }>},
    {"rebases.writable", "A rebased word is in a writable segment.",
     each<rebased,
          [](const Fixups& fixups, const RebasedWord& word) {
            return unless(!word.segment || (fixups.image->segments[*word.segment].protection &
                                            macho::kWrite) != 0,
                          "its segment cannot be written to");
          }>},
    {"rebases.in-file", "A rebased word's value comes from the file.",
     each<rebased,
          [](const Fixups& fixups, const RebasedWord& word) {
            return unless(
                !isRebasedInside(*fixups.image, word) || fixups.image->place(word.address),
                "the file does not hold it");
          }>},
    {"rebases.aligned", "A rebased word is at a multiple of its size.",
     each<rebased,
          [](const Fixups& fixups, const RebasedWord& word) {
            return unless(word.address % fixups.image->pointerSize() == 0, "it does not");
          }>},
    {"rebases.once", "No word is rebased twice, since it would move twice as far.",
     each<rebased,
          [](const Fixups& fixups, const RebasedWord& word) {
            return unless(fixups.rebasedAt.at(word.address) == &word, "twice");
          }>},
    {"rebases.target", "A rebased word holds an address in the image.",
     each<rebased,
          [](const Fixups& fixups, const RebasedWord& word) {
            const auto value = fixups.image->word(word.address);
            return unless(!value || isInImage(*fixups.image, *value),
                          "holds " + hex(value.value_or(0)));
          }>},
};

}  // namespace

std::span<const FixupRule> rebaseRules() { return kRebases; }

}  // namespace varnix::device
