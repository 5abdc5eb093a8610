// Segments: what is mapped where, and with which access.
#include <algorithm>

#include "macho/format.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

/// Whether ranges share a byte. An empty range shares none.
bool overlap(uint64_t a, uint64_t aSize, uint64_t b, uint64_t bSize) {
  return aSize != 0 && bSize != 0 && a < b + bSize && b < a + aSize;
}

template <auto Address, auto Size>
void apart(const Image& image, const Say& say) {
  for (size_t i = 0; i < image.segments.size(); ++i)
    for (size_t j = 0; j < i; ++j) {
      const SegmentCommand &a = image.segments[j], &b = image.segments[i];
      if (overlap(a.*Address, a.*Size, b.*Address, b.*Size))
        say(labelOf(a) + " and " + labelOf(b) + " overlap");
    }
}

bool holdsCommands(const Image& image, const SegmentCommand& segment) {
  return segment.fileSize != 0 && segment.fileOffset < image.commandRoom;
}

void oneHoldsCommands(const Image& image, const Say& say) {
  int count = 0;
  for (const SegmentCommand& segment : image.segments) {
    if (!holdsCommands(image, segment)) continue;
    ++count;
    if (segment.fileOffset != 0 || segment.fileSize < image.headerSize() + image.commandRoom ||
        segment.protection != (macho::kRead | macho::kExecute))
      say(labelOf(segment) + ": begins at " + hex(segment.fileOffset) + ", protection " +
          hex(segment.protection));
  }
  if (count != 1) say("they are in " + std::to_string(count) + " segments");
}

void inOrder(const Image& image, const Say& say) {
  uint64_t end = 0;
  for (const SegmentCommand& segment : image.segments) {
    if (segment.address < end)
      say(labelOf(segment) + ": begins at " + hex(segment.address) + ", before " + hex(end));
    end = alignUp(segment.end(), macho::kPage);
  }
}

constexpr ImageRule kSegments[] = {
    {"segments.count", "There is at least one segment, and no more than 255.",
     whole<[](const Image& image) {
       return unless(!image.segments.empty() && image.segments.size() <= 255,
                     std::to_string(image.segments.size()) + " segments");
     }>},
    {"segments.not-empty",
     "No segment is empty, since opcodes and loader would then count segments differently.",
     each<&Image::segments,
          [](const Image&, const SegmentCommand& segment) {
            return unless(segment.size != 0, "no memory");
          }>},
    {"segments.file-size", "A segment is no larger in the file than in memory.",
     each<&Image::segments,
          [](const Image&, const SegmentCommand& segment) {
            return unless(segment.fileSize <= segment.size,
                          hex(segment.fileSize) + " bytes of the file for " + hex(segment.size));
          }>},
    {"segments.no-wrap", "A segment ends within the lower half of all addresses.",
     each<&Image::segments,
          [](const Image& image, const SegmentCommand& segment) {
            const uint64_t end = uint64_t{1} << (image.is64 ? 63 : 31);
            return unless(segment.address < end && segment.size < end - segment.address,
                          "ends at " + hex(segment.end()));
          }>},
    {"segments.accessible", "A segment that comes partly from the file can be accessed.",
     each<&Image::segments,
          [](const Image&, const SegmentCommand& segment) {
            return unless(segment.protection != 0 || segment.fileSize == 0 ||
                              segment.fileSize == segment.size,
                          "no access at all");
          }>},
    {"segments.load-commands",
     "Header and load commands are in one segment, at its start, which can be read and run.",
     oneHoldsCommands},
    {"segments.memory-apart", "Segments share no memory.",
     apart<&SegmentCommand::address, &SegmentCommand::size>},
    {"segments.file-apart", "Segments share no part of the file.",
     apart<&SegmentCommand::fileOffset, &SegmentCommand::fileSize>},
    {"segments.link-edit-last",
     "There is only one __LINKEDIT, and it is the last part of the file.",
     whole<[](const Image& image) {
       const auto isLinkEdit = [](const SegmentCommand& each) { return each.name == "__LINKEDIT"; };
       const SegmentCommand* last = image.segment("__LINKEDIT");
       return unless(std::ranges::count_if(image.segments, isLinkEdit) == 1 &&
                         std::ranges::all_of(image.segments,
                                             [&](const SegmentCommand& each) {
                                               return each.fileOffset <= last->fileOffset;
                                             }),
                     "missing, twice, or not last");
     }>},
    {"segments.ascending", "Each segment begins after the pages of the one before.", inOrder},
    {"segments.file-page", "A segment begins at a multiple of 16 KiB in the whole file.",
     each<&Image::segments,
          [](const Image& image, const SegmentCommand& segment) {
            const uint64_t at = image.offset + segment.fileOffset;
            return unless(segment.fileSize == 0 || at % macho::kPage == 0, "begins at " + hex(at));
          }>},
    {"segments.memory-page", "A segment begins at a multiple of 16 KiB in memory.",
     each<&Image::segments,
          [](const Image&, const SegmentCommand& segment) {
            return unless(segment.address % macho::kPage == 0, "begins at " + hex(segment.address));
          }>},
    {"segments.inside-file", "A segment's part of the file exists.",
     each<&Image::segments,
          [](const Image& image, const SegmentCommand& segment) {
            return unless(segment.fileOffset <= image.bytes.size() &&
                              segment.fileSize <= image.bytes.size() - segment.fileOffset,
                          "ends at " + hex(segment.fileOffset + segment.fileSize) + " of " +
                              hex(image.bytes.size()));
          }>},
    {"segments.protection",
     "No segment is both writable and executable, or begins with more access than it may have.",
     each<&Image::segments,
          [](const Image&, const SegmentCommand& segment) {
            constexpr uint32_t both = macho::kWrite | macho::kExecute;
            return unless(
                (segment.protection & both) != both && (segment.maxProtection & both) != both &&
                    (segment.protection & ~segment.maxProtection) == 0,
                "protection " + hex(segment.protection) + " of " + hex(segment.maxProtection));
          }>},
    {"segments.no-page-zero", "There is no __PAGEZERO, which only executables have.",
     whole<[](const Image& image) {
       return unless(image.segment("__PAGEZERO") == nullptr, "there is one");
     }>},
};

}  // namespace

std::span<const ImageRule> segmentRules() { return kSegments; }

}  // namespace varnix::device
