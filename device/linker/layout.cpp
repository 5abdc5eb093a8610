#include "linker/layout.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "linker/thumb.h"
#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {
namespace {

constexpr uint32_t kMost = 1 << 24;

OutputSection stubSection(uint32_t count) {
  return {.segment = "__TEXT",
          .name = "__stubs",
          .size = count * kStubSize,
          .alignment = 2,
          .flags = macho::kSymbolStubs | macho::kPureInstructions | macho::kSomeInstructions,
          .stubSize = kStubSize,
          .content = std::vector<uint8_t>(size_t{count} * kStubSize)};
}

OutputSection pointerSection(uint32_t count) {
  return {.segment = "__DATA",
          .name = "__got",
          .size = count * 4,
          .alignment = 2,
          .flags = macho::kNonLazySymbolPointers,
          .content = std::vector<uint8_t>(size_t{count} * 4)};
}

/// Order: code, constants, pointers that the loader fills in, data, zeros.
int rank(const OutputSection& section) {
  if (section.segment == "__TEXT")
    return section.name == "__text" ? 0 : section.name == "__stubs" ? 1 : 2;
  if (section.isZeros()) return 5;
  return section.name == "__got" ? 3 : 4;
}

/// Places sections one after another, and knows where the last one ends.
class Place {
 public:
  explicit Place(uint32_t start) : end_(start) {}
  void put(OutputSection& section) {
    const uint64_t start = alignUp(end_, uint64_t{1} << section.alignment);
    if (start + section.size > kMost) throw Error("the library would be larger than 16 MiB");
    section.address = static_cast<uint32_t>(start);
    end_ = section.address + section.size;
  }
  uint32_t end() const { return end_; }

 private:
  uint32_t end_;
};

uint32_t wholePages(uint32_t size) { return static_cast<uint32_t>(alignUp(size, kPageSize)); }

void placeAll(Layout& layout, uint32_t headerSize) {
  Place place(headerSize);
  auto section = layout.sections.begin();
  const auto end = layout.sections.end();
  for (; section != end && section->segment == "__TEXT"; ++section) place.put(*section);
  const uint32_t textSize = wholePages(place.end());
  layout.text = {0, textSize, 0, textSize};

  place = Place(textSize);
  for (; section != end && !section->isZeros(); ++section) place.put(*section);
  const uint32_t dataFileSize = wholePages(place.end() - textSize);
  for (; section != end; ++section) place.put(*section);
  const uint32_t dataSize = std::max(dataFileSize, wholePages(place.end() - textSize));
  layout.data = {textSize, dataSize, textSize, dataFileSize};
  layout.linkEdit = {textSize + dataSize, 0, textSize + dataFileSize, 0};
}

}  // namespace

bool OutputSection::isZeros() const {
  return (flags & macho::kSectionTypeMask) == macho::kZeroFill;
}

uint32_t Layout::moved(const Object& object, size_t section, uint32_t address) const {
  return address - object.sections[section].address + sections[ofObject[section]].address;
}

Layout layOut(const Object& object, uint32_t stubCount, uint32_t headerSize) {
  std::vector<OutputSection> unordered;
  for (const Section& section : object.sections) {
    if (section.size > kMost) throw Error("the library would be larger than 16 MiB");
    unordered.push_back({.segment = section.segment,
                         .name = section.name,
                         .size = section.size,
                         .alignment = section.alignment,
                         .flags = section.flags,
                         .content = {section.content.begin(), section.content.end()}});
  }
  unordered.push_back(stubSection(stubCount));
  unordered.push_back(pointerSection(stubCount));

  std::vector<size_t> order(unordered.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::sort(order.begin(), order.end(), [&](size_t a, size_t b) {
    return std::pair(rank(unordered[a]), a) < std::pair(rank(unordered[b]), b);
  });
  Layout layout;
  std::vector<size_t> newIndex(unordered.size());
  for (const size_t old : order) {
    newIndex[old] = layout.sections.size();
    layout.sections.push_back(std::move(unordered[old]));
  }
  layout.ofObject.assign(newIndex.begin(), newIndex.end() - 2);
  layout.stubs = newIndex[newIndex.size() - 2];
  layout.stubPointers = newIndex.back();
  placeAll(layout, headerSize);
  return layout;
}

}  // namespace varnix::device
