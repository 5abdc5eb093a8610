#include "signer/image.h"

#include <algorithm>

#include "macho/commands.h"
#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {
namespace {

/// Where the fields of a segment are, which depends on its width.
struct Fields {
  uint32_t offset, size, sectionCount, sections, sectionSize, sectionOffset;
};
constexpr Fields kFields32{32, 36, 48, 56, 68, 40}, kFields64{40, 48, 64, 72, 80, 48};

void readSegment(Reader command, uint64_t at, SignedImage& image) {
  const Fields& fields = image.is64 ? kFields64 : kFields32;
  const auto number = [&](uint32_t field) {
    return image.is64 ? command.u64(field) : command.u32(field);
  };
  const std::string_view name = command.fixedText(8, 16);
  if (name == "__TEXT") {
    image.textOffset = number(fields.offset);
    image.textSize = number(fields.size);
  } else if (name == "__LINKEDIT") {
    image.linkEdit = at;
    image.linkEditOffset = number(fields.offset);
    image.linkEditSize = number(fields.size);
  }
  const uint32_t count = command.u32(fields.sectionCount);
  for (uint32_t i = 0; i < count; ++i) {
    const uint64_t section = fields.sections + uint64_t{i} * fields.sectionSize;
    const uint32_t offset = command.u32(section + fields.sectionOffset);
    if (offset != 0) image.firstContent = std::min(image.firstContent, offset);
  }
}

void check(const SignedImage& image, uint64_t size) {
  if (image.linkEdit == 0) throw Error("no __LINKEDIT, where a signature belongs");
  if (image.linkEditOffset > size || image.linkEditSize != size - image.linkEditOffset)
    throw Error("__LINKEDIT does not end where the file ends");
  if (image.command && (image.signatureOffset < image.linkEditOffset ||
                        uint64_t{image.signatureOffset} + image.signatureSize != size))
    throw Error("the signature does not end where the file ends");
}

}  // namespace

SignedImage readImage(Reader file) {
  SignedImage image;
  const uint32_t magic = file.u32(0), cpu = file.u32(4), type = file.u32(12);
  image.is64 = magic == macho::kMagic64;
  if ((!image.is64 && magic != macho::kMagic32) ||
      cpu != (image.is64 ? macho::kCpuArm64 : macho::kCpuArm) ||
      (type != macho::kDylib && type != macho::kBundle))
    throw Error("not a library for one Arm architecture");
  if (file.size() > 0x7fffffff) throw Error("larger than 2 GiB");
  image.firstContent = static_cast<uint32_t>(file.size());
  image.commandCount = file.u32(16);
  image.commandSize = file.u32(20);
  const uint32_t headerSize = image.is64 ? macho::kHeaderSize64 : macho::kHeaderSize32;
  file.at(headerSize, image.commandSize);
  image.headerEnd = headerSize + image.commandSize;
  uint64_t end = headerSize;
  forEachCommand(file, [&](const LoadCommand& command) {
    end = command.at + command.bytes.size();
    if (command.kind == (image.is64 ? macho::kSegment64 : macho::kSegment)) {
      readSegment(command.bytes, command.at, image);
    } else if (command.kind == macho::kCodeSignature) {
      if (image.command) throw Error("two signatures");
      image.command = command.at;
      image.signatureOffset = command.bytes.u32(8);
      image.signatureSize = command.bytes.u32(12);
    }
  });
  // Another command is added after the last, at the end that the header gives.
  if (end != image.headerEnd) throw Error("the load commands do not fill their room");
  check(image, file.size());
  return image;
}

}  // namespace varnix::device
