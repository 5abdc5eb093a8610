// Sections, and the tables of __LINKEDIT.
#include <algorithm>

#include "macho/format.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

const SegmentCommand& segmentOf(const Image& image, const SectionHeader& section) {
  return image.segments[section.segment];
}

bool liesWithin(const SectionHeader& section, const SegmentCommand& segment) {
  if (section.address < segment.address || section.address - segment.address > segment.size ||
      section.size > segment.size - (section.address - segment.address))
    return false;
  return section.isZeros() ||
         section.offset - segment.fileOffset == section.address - segment.address;
}

/// Whether the beginning of the zeros, where a page of the file backs it, is zero.
bool isZeroInFile(const Image& image, const SectionHeader& section) {
  const SegmentCommand& segment = segmentOf(image, section);
  const uint64_t from = section.address - segment.address;
  const uint64_t to = std::min(from + section.size, segment.fileSize);
  if (from >= to) return true;
  const auto bytes = image.bytes.at(segment.fileOffset + from, to - from);
  return std::ranges::all_of(bytes, [](uint8_t byte) { return byte == 0; });
}

constexpr ImageRule kSections[] = {
    {"sections.inside-file", "A section ends within its segment's part of the file.",
     each<&Image::sections,
          [](const Image& image, const SectionHeader& section) {
            const SegmentCommand& segment = segmentOf(image, section);
            return unless(section.offset == 0 || section.offset + section.size <=
                                                     segment.fileOffset + segment.fileSize,
                          "ends at " + hex(section.offset + section.size));
          }>},
    {"sections.inside-segment",
     "A section is within its segment, at the same distance in memory as in the file.",
     each<&Image::sections,
          [](const Image& image, const SectionHeader& section) {
            return unless(liesWithin(section, segmentOf(image, section)),
                          hex(section.size) + " bytes at " + hex(section.address) +
                              ", of the file at " + hex(section.offset));
          }>},
    {"sections.aligned", "A section begins at a multiple of its alignment.",
     each<&Image::sections,
          [](const Image&, const SectionHeader& section) {
            return unless(
                section.alignment < 32 && section.address % (uint64_t{1} << section.alignment) == 0,
                hex(section.address) + " for 2^" + std::to_string(section.alignment));
          }>},
    {"sections.no-relocations", "No section has relocations of its own.",
     each<&Image::sections,
          [](const Image&, const SectionHeader& section) {
            constexpr uint32_t some = macho::kExternalRelocations | macho::kLocalRelocations;
            return unless(section.relocationCount == 0 && (section.flags & some) == 0,
                          std::to_string(section.relocationCount) + " relocations");
          }>},
    {"sections.zeros", "Where a page of the file backs zeros, the file has zeros.",
     each<&Image::sections,
          [](const Image& image, const SectionHeader& section) {
            return unless(!section.isZeros() || isZeroInFile(image, section),
                          "the file has other bytes");
          }>},
    {"sections.unwind", "Unwind tables are left out or are not empty.",
     each<&Image::sections,
          [](const Image&, const SectionHeader& section) {
            const bool isUnwind = section.name == "__eh_frame" || section.name == "__unwind_info";
            return unless(!isUnwind || section.size != 0, "empty");
          }>},
};

/// Every table that is not empty, in the file's order.
std::vector<LinkTable> tablesOf(const Image& image) {
  const auto& info = *image.loaderInfo;
  const auto& symbols = *image.symbolTable;
  const uint64_t symbolSize = image.is64 ? macho::kNlistSize64 : macho::kNlistSize;
  std::vector<LinkTable> tables = {
      {"rebases", info[0], info[1]},     {"binds", info[2], info[3]},
      {"weak binds", info[4], info[5]},  {"lazy binds", info[6], info[7]},
      {"exports", info[8], info[9]},     {"symbols", symbols[0], symbols[1] * symbolSize},
      {"names", symbols[2], symbols[3]}, *image.indirectSymbols,
  };
  for (const auto* more : {&image.linkTables, &image.signatures})
    tables.insert(tables.end(), more->begin(), more->end());
  std::erase_if(tables, [](const LinkTable& table) { return table.size == 0; });
  std::ranges::sort(tables, {}, &LinkTable::offset);
  return tables;
}

void tablesApart(const Image& image, const Say& say) {
  const auto tables = tablesOf(image);
  for (size_t i = 1; i < tables.size(); ++i)
    if (tables[i - 1].offset + tables[i - 1].size > tables[i].offset)
      say(labelOf(tables[i - 1]) + " and " + labelOf(tables[i]) + " overlap");
}

constexpr ImageRule kLinkEdit[] = {
    {"link-edit.inside", "Each table of __LINKEDIT is within it.",
     each<tablesOf,
          [](const Image& image, const LinkTable& table) {
            const SegmentCommand* segment = image.segment("__LINKEDIT");
            return unless(segment != nullptr && table.offset >= segment->fileOffset &&
                              table.offset + table.size <= segment->fileOffset + segment->fileSize,
                          hex(table.size) + " bytes at " + hex(table.offset));
          }>},
    {"link-edit.apart", "Tables of __LINKEDIT share no bytes.", tablesApart},
};

}  // namespace

std::span<const ImageRule> sectionRules() { return kSections; }
std::span<const ImageRule> linkEditRules() { return kLinkEdit; }

}  // namespace varnix::device
