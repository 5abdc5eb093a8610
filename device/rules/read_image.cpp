#include "rules/image.h"

#include <algorithm>

#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {

namespace {

/// Reads fields of either width, one after another.
class Fields {
 public:
  Fields(Reader bytes, uint64_t at, bool is64) : bytes_(bytes), at_(at), is64_(is64) {}
  uint32_t u32() {
    at_ += 4;
    return bytes_.u32(at_ - 4);
  }
  uint64_t word() {
    if (!is64_) return u32();
    at_ += 8;
    return bytes_.u64(at_ - 8);
  }

 private:
  Reader bytes_;
  uint64_t at_;
  bool is64_;
};

SectionHeader readSection(const Image& image, Reader bytes, uint64_t at) {
  SectionHeader section;
  section.name = bytes.fixedText(at, 16);
  section.segmentName = bytes.fixedText(at + 16, 16);
  section.segment = image.segments.size() - 1;
  Fields fields(bytes, at + 32, image.is64);
  section.address = fields.word();
  section.size = fields.word();
  section.offset = fields.u32();
  section.alignment = fields.u32();
  fields.u32();
  section.relocationCount = fields.u32();
  section.flags = fields.u32();
  section.firstIndirect = fields.u32();
  section.stubSize = fields.u32();
  return section;
}

void readSegment(Image& image, const LoadCommand& command) {
  SegmentCommand segment;
  segment.name = command.bytes.fixedText(8, 16);
  Fields fields(command.bytes, 24, image.is64);
  for (uint64_t* field : {&segment.address, &segment.size, &segment.fileOffset, &segment.fileSize})
    *field = fields.word();
  segment.maxProtection = fields.u32();
  segment.protection = fields.u32();
  image.segments.push_back(segment);
  const uint64_t count = fields.u32();
  const uint64_t header = image.is64 ? macho::kSegmentSize64 : macho::kSegmentSize;
  const uint64_t size = image.is64 ? macho::kSectionSize64 : macho::kSectionSize;
  if (count * size > command.bytes.size() - header)
    throw CommandError(CommandError::Kind::leavesHeader, std::string(segment.name) +
                                                             ": its sections leave load command #" +
                                                             std::to_string(command.index));
  for (uint64_t i = 0; i < count; ++i)
    image.sections.push_back(readSection(image, command.bytes, header + i * size));
}

/// The name that a command points to, which follows its fields.
std::string_view dylibName(const LoadCommand& command) {
  const uint32_t at = command.bytes.u32(8);
  if (at < macho::kDylibSize || at >= command.bytes.size()) return {};
  const std::string_view rest = command.bytes.fixedText(at, command.bytes.size() - at);
  return at + rest.size() < command.bytes.size() ? rest : std::string_view();
}

LinkTable tableOf(const LoadCommand& command, std::string_view name) {
  return {name, command.bytes.u32(8), command.bytes.u32(12)};
}

template <size_t Count>
std::array<uint32_t, Count> numbers(const LoadCommand& command) {
  std::array<uint32_t, Count> result;
  for (size_t i = 0; i < Count; ++i) result[i] = command.bytes.u32(8 + 4 * i);
  return result;
}

void readCommand(Image& image, const LoadCommand& command) {
  image.commands.push_back(command);
  switch (command.kind) {
    case macho::kSegment:
    case macho::kSegment64:
      // Another rule reports segments of the wrong width.
      if ((command.kind == macho::kSegment64) == image.is64) readSegment(image, command);
      break;
    case macho::kDyldInfo:
    case macho::kDyldInfoOnly:
      image.loaderInfo = numbers<10>(command);
      break;
    case macho::kSymtab:
      image.symbolTable = numbers<4>(command);
      break;
    case macho::kDysymtab:
      image.indirectSymbols = {"indirect symbols", command.bytes.u32(56),
                               uint64_t{4} * command.bytes.u32(60)};
      image.relocations = uint64_t{command.bytes.u32(68)} + command.bytes.u32(76);
      break;
    case macho::kIdDylib:
      image.installName = dylibName(command);
      break;
    case macho::kLoadDylib:
    case macho::kLoadWeakDylib:
    case macho::kReexportDylib:
    case macho::kLoadUpwardDylib:
      image.libraries.push_back({static_cast<uint32_t>(image.libraries.size() + 1),
                                 dylibName(command), command.bytes.u32(20)});
      break;
    case macho::kCodeSignature:
      image.signatures.push_back(tableOf(command, "signature"));
      break;
    case macho::kSegmentSplitInfo:
      image.linkTables.push_back(tableOf(command, "split info"));
      break;
    case macho::kFunctionStarts:
      image.linkTables.push_back(tableOf(command, "function starts"));
      break;
    case macho::kDataInCode:
      image.linkTables.push_back(tableOf(command, "data in code"));
      break;
    case macho::kDylibCodeSigningDirectives:
      image.linkTables.push_back(tableOf(command, "signing directives"));
      break;
    case macho::kOptimizationHint:
      image.linkTables.push_back(tableOf(command, "optimization hints"));
      break;
    case macho::kVersionMinIphoneos:
      image.minimumVersion = command.bytes.u32(8);
      break;
    default:
      break;
  }
}

}  // namespace

void readHeader(Image& image) {
  image.is64 = image.bytes.u32(0) == macho::kMagic64;
  image.processor = image.bytes.u32(4);
  image.subtype = image.bytes.u32(8);
  image.type = image.bytes.u32(12);
  image.commandRoom = image.bytes.u32(20);
  image.flags = image.bytes.u32(24);
}

void readCommands(Image& image) {
  try {
    forEachCommand(image.bytes, [&](const LoadCommand& command) { readCommand(image, command); });
  } catch (const CommandError& error) {
    image.commandFault = error;
  }
}

}  // namespace varnix::device
