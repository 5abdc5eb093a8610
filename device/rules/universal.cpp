// Files with several slices.
#include "rules/universal.h"

#include <algorithm>

#include "macho/format.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

constexpr uint64_t kEntries = 8, kEntrySize = 20;
/// The kernel reads a slice's digests by pages of this size.
constexpr uint64_t kSignedPage = 0x1000;

bool fitsFirstRead(const UniversalFile& file) {
  const uint64_t end = kEntries + kEntrySize * file.count;
  return file.count != 0 && end <= macho::kFirstRead && end <= file.bytes.size();
}

/// The rules after this apply only to universal files.
const std::vector<FileSlice>& slicesOf(const UniversalFile& file) {
  static const std::vector<FileSlice> none;
  return file.isUniversal ? file.slices : none;
}

bool saysTheSame(const FileSlice& slice) {
  return !slice.bytes || slice.bytes->size() < macho::kHeaderSize32 ||
         (slice.bytes->u32(4) == slice.entry.cpu && slice.bytes->u32(8) == slice.entry.subtype);
}

bool isArmV7(const FileSlice& slice) {
  return slice.entry.cpu == macho::kCpuArm && slice.entry.subtype == macho::kSubtypeArmV7;
}

bool isArm64(const FileSlice& slice) { return slice.entry.cpu == macho::kCpuArm64; }

template <auto Clash>
void pairs(const UniversalFile& file, const Say& say) {
  const auto& slices = slicesOf(file);
  for (size_t i = 0; i < slices.size(); ++i)
    for (size_t j = 0; j < i; ++j)
      if (Clash(slices[j].entry, slices[i].entry))
        say("slices #" + std::to_string(j) + " and #" + std::to_string(i));
}

bool touch(const UniversalSlice& a, const UniversalSlice& b) {
  return a.offset < alignUp(b.offset + b.size, kSignedPage) &&
         b.offset < alignUp(a.offset + a.size, kSignedPage);
}

bool isSameProcessor(const UniversalSlice& a, const UniversalSlice& b) {
  return a.cpu == b.cpu && a.subtype == b.subtype;
}

constexpr FileRule kUniversal[] = {
    {"universal.table", "The table of slices is not empty, and is in the file's first 4096 bytes.",
     whole<[](const UniversalFile& file) {
       return unless(!file.isUniversal || fitsFirstRead(file),
                     std::to_string(file.count) + " slices");
     }>},
    {"universal.inside", "A slice is within the file.",
     each<slicesOf,
          [](const UniversalFile& file, const FileSlice& slice) {
            return unless(slice.bytes.has_value(), "ends at " +
                                                       hex(slice.entry.offset + slice.entry.size) +
                                                       " of " + hex(file.bytes.size()));
          }>},
    {"universal.page", "A slice begins at a multiple of 16 KiB.",
     each<slicesOf,
          [](const UniversalFile&, const FileSlice& slice) {
            return unless(slice.entry.offset % macho::kPage == 0,
                          "begins at " + hex(slice.entry.offset));
          }>},
    {"universal.apart", "Slices share no page of 4 KiB.", pairs<touch>},
    {"universal.processor", "A slice's own header names the processor that the table gives.",
     each<slicesOf,
          [](const UniversalFile&, const FileSlice& slice) {
            return unless(saysTheSame(slice), "its header says otherwise");
          }>},
    {"universal.once", "There is only one slice for each processor.", pairs<isSameProcessor>},
    {"universal.both", "There is a slice for armv7 and one for arm64.",
     whole<[](const UniversalFile& file) {
       // If the table cannot be read, another rule says so.
       return unless(file.slices.empty() || !file.isUniversal ||
                         (std::ranges::any_of(file.slices, isArmV7) &&
                          std::ranges::any_of(file.slices, isArm64)),
                     "one is missing");
     }>,
     Asker::project},
};

}  // namespace

UniversalFile readUniversalFile(Reader bytes) {
  UniversalFile file{.bytes = bytes, .isUniversal = isUniversal(bytes), .count = 0, .slices = {}};
  if (!file.isUniversal) {
    file.slices.push_back({0, {0, 0, 0, bytes.size()}, bytes});
    return file;
  }
  file.count = sliceCount(bytes);
  if (!fitsFirstRead(file)) return file;
  for (uint32_t i = 0; i < file.count; ++i) {
    FileSlice slice{i, universalSlice(bytes, i), std::nullopt};
    if (slice.entry.offset + slice.entry.size <= bytes.size())
      slice.bytes = bytes.part(slice.entry.offset, slice.entry.size);
    file.slices.push_back(slice);
  }
  return file;
}

std::string processorName(uint32_t cpu, uint32_t subtype) {
  if (cpu == macho::kCpuArm64) return "arm64";
  if (cpu == macho::kCpuArm && subtype == macho::kSubtypeArmV7) return "armv7";
  return "processor " + hex(cpu) + "." + hex(subtype);
}

std::span<const FileRule> fileRules() { return kUniversal; }

}  // namespace varnix::device
