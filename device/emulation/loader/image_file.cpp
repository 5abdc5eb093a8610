#include "loader/image_file.h"

#include <algorithm>

#include "macho/commands.h"
#include "macho/error.h"
#include "macho/format.h"
#include "macho/universal.h"

namespace varnix::device {

namespace {

constexpr uint64_t kLargestImage = 64 << 20;
constexpr uint32_t kLargestCommandCount = 1024, kLargestSliceCount = 32;

uint32_t cpuOf(Architecture architecture) {
  return architecture == Architecture::arm64 ? macho::kCpuArm64 : macho::kCpuArm;
}

/// What the platform loads into a running process.
bool isLoadable(uint32_t fileType) {
  return fileType == macho::kDylib || fileType == macho::kBundle;
}

bool covers(uint64_t address, uint64_t size, uint64_t innerAddress, uint64_t innerSize) {
  return innerAddress >= address && innerAddress - address <= size &&
         innerSize <= size - (innerAddress - address);
}

/// Reads load commands, one after another, into an ImageFile.
class Commands {
 public:
  explicit Commands(ImageFile& image)
      : image_(image), is64_(image.architecture == Architecture::arm64) {}

  void read(uint32_t kind, Reader command) {
    switch (kind) {
      case macho::kSegment:
      case macho::kSegment64:
        if ((kind == macho::kSegment64) != is64_) throw Error("a segment of the other word size");
        return segment(command);
      case macho::kIdDylib:
        image_.installName = name(command);
        image_.version = command.u32(20);
        return;
      case macho::kLoadDylib:
      case macho::kLoadWeakDylib:
        image_.libraries.push_back({name(command), kind == macho::kLoadWeakDylib, command.u32(20)});
        return;
      case macho::kReexportDylib:
        throw Error("libraries that are exported again are not known here");
      case macho::kDyldInfo:
      case macho::kDyldInfoOnly:
        return fixups(command);
      case macho::kChainedFixups:
        throw Error("chained fixups, which this platform's loader cannot read");
      default:
        return;
    }
  }

 private:
  uint64_t word(Reader command, uint64_t offset) const {
    return is64_ ? command.u64(offset) : command.u32(offset);
  }

  static std::string_view name(Reader command) { return command.text(command.u32(8)); }

  void segment(Reader command) {
    const uint64_t wordSize = image_.pointerSize();
    ImageSegment segment;
    segment.name = command.fixedText(8, 16);
    segment.address = word(command, 24);
    segment.size = word(command, 24 + wordSize);
    segment.fileOffset = word(command, 24 + 2 * wordSize);
    segment.fileSize = word(command, 24 + 3 * wordSize);
    segment.protection = command.u32(28 + 4 * wordSize);
    if (segment.size > kLargestImage) throw Error("a segment of more than 64 MiB");
    if (segment.fileSize > segment.size) throw Error("a segment is smaller than its bytes");
    if (segment.address + segment.size < segment.address) throw Error("a segment wraps around");
    image_.bytes.at(segment.fileOffset, segment.fileSize);
    for (const ImageSegment& other : image_.segments) {
      if (segment.address < other.address + other.size &&
          other.address < segment.address + segment.size)
        throw Error("two segments overlap");
    }
    image_.segments.push_back(segment);
    const uint64_t header = is64_ ? macho::kSegmentSize64 : macho::kSegmentSize;
    const uint64_t each = is64_ ? macho::kSectionSize64 : macho::kSectionSize;
    const uint32_t count = command.u32(header - 8);
    for (uint32_t i = 0; i < count; ++i) section(segment, command.part(header + i * each, each));
  }

  void section(const ImageSegment& segment, Reader entry) {
    const uint64_t wordSize = image_.pointerSize();
    ImageSection section;
    section.name = entry.fixedText(0, 16);
    section.segment = segment.name;
    section.address = word(entry, 32);
    section.size = word(entry, 32 + wordSize);
    section.type = static_cast<uint8_t>(entry.u32(48 + 2 * wordSize) & macho::kSectionTypeMask);
    if (!covers(segment.address, segment.size, section.address, section.size))
      throw Error("a section lies outside its segment");
    image_.sections.push_back(section);
  }

  void fixups(Reader command) {
    auto part = [&](uint64_t at) {
      return image_.bytes.part(command.u32(at), command.u32(at + 4));
    };
    image_.rebases = part(8);
    image_.binds = part(16);
    image_.weakBinds = part(24);
    image_.lazyBinds = part(32);
    image_.exports = part(40);
  }

  ImageFile& image_;
  bool is64_;
};

void measure(ImageFile& image) {
  if (image.segments.empty()) throw Error("no segments");
  uint64_t end = 0;
  image.base = ~uint64_t{0};
  for (const ImageSegment& segment : image.segments) {
    image.base = std::min(image.base, segment.address);
    end = std::max(end, segment.address + segment.size);
  }
  image.size = end - image.base;
  if (image.size > kLargestImage) throw Error("more than 64 MiB in memory");
}

}  // namespace

std::string_view nameOf(Architecture architecture) {
  return architecture == Architecture::arm64 ? "arm64" : "armv7";
}

const ImageSection* ImageFile::section(std::string_view name) const {
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const ImageSection& each) { return each.name == name; });
  return found == sections.end() ? nullptr : &*found;
}

Reader sliceFor(Architecture architecture, Reader file) {
  if (!isUniversal(file)) return file;
  const uint32_t count = sliceCount(file);
  if (count > kLargestSliceCount) throw Error("a universal file of too many slices");
  for (uint32_t i = 0; i < count; ++i) {
    const UniversalSlice slice = universalSlice(file, i);
    if (slice.cpu == cpuOf(architecture)) return file.part(slice.offset, slice.size);
  }
  throw Error("no slice for " + std::string(nameOf(architecture)));
}

ImageFile readImageFile(Architecture architecture, Reader slice) {
  const bool is64 = architecture == Architecture::arm64;
  if (slice.u32(0) != (is64 ? macho::kMagic64 : macho::kMagic32) ||
      slice.u32(4) != cpuOf(architecture) || !isLoadable(slice.u32(12)))
    throw Error("no dynamic library for " + std::string(nameOf(architecture)));
  ImageFile image;
  image.architecture = architecture;
  image.bytes = slice;
  if (slice.u32(16) > kLargestCommandCount) throw Error("too many load commands");
  Commands each(image);
  forEachCommand(slice,
                 [&](const LoadCommand& command) { each.read(command.kind, command.bytes); });
  measure(image);
  return image;
}

}  // namespace varnix::device
