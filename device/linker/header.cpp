#include "linker/header.h"

#include <string_view>

#include "macho/format.h"

namespace varnix::device {
namespace {

/// Size of a library's load command, with the name padded to whole words.
uint32_t dylibSize(const std::string& name) {
  return static_cast<uint32_t>(alignUp(macho::kDylibSize + name.size() + 1, 4));
}

uint32_t commandSize(size_t sectionCount, const LinkOptions& options) {
  auto size =
      static_cast<uint32_t>(3 * macho::kSegmentSize + sectionCount * macho::kSectionSize +
                            macho::kDyldInfoSize + macho::kSymtabSize + macho::kDysymtabSize +
                            macho::kUuidSize + macho::kVersionMinSize + macho::kLinkeditDataSize);
  if (!options.isBundle) size += dylibSize(options.installName);
  for (const StubLibrary& library : options.libraries) size += dylibSize(library.installName);
  return size;
}

/// What the header says of a library, and of a bundle.
struct Kind {
  macho::FileType type;
  uint32_t flags;
};

Kind kindOf(const LinkOptions& options) {
  if (options.isBundle) return {macho::kBundle, 0};
  return {macho::kDylib, macho::kNoReexportedDylibs};
}

void command(Writer& out, macho::Command kind, uint32_t size) {
  out.u32(kind);
  out.u32(size);
}

void segment(Writer& out, std::string_view name, const Segment& segment, uint32_t protection,
             const std::vector<const OutputSection*>& sections) {
  const auto count = static_cast<uint32_t>(sections.size());
  command(out, macho::kSegment, macho::kSegmentSize + count * macho::kSectionSize);
  out.fixedText(name, 16);
  for (const uint32_t field : {segment.address, segment.size, segment.fileOffset, segment.fileSize,
                               protection, protection, count, 0u})
    out.u32(field);
  for (const OutputSection* section : sections) {
    out.fixedText(section->name, 16);
    out.fixedText(section->segment, 16);
    for (const uint32_t field :
         {section->address, section->size, section->isZeros() ? 0 : section->address,
          section->alignment, 0u, 0u, section->flags, section->firstIndirect, section->stubSize})
      out.u32(field);
  }
}

void segments(Writer& out, const Layout& layout) {
  std::vector<const OutputSection*> text, data;
  for (const OutputSection& section : layout.sections)
    (section.segment == "__TEXT" ? text : data).push_back(&section);
  segment(out, "__TEXT", layout.text, macho::kRead | macho::kExecute, text);
  segment(out, "__DATA", layout.data, macho::kRead | macho::kWrite, data);
  segment(out, "__LINKEDIT", layout.linkEdit, macho::kRead, {});
}

void dylib(Writer& out, macho::Command kind, const std::string& name, uint32_t current,
           uint32_t compatibility) {
  const size_t start = out.size();
  command(out, kind, dylibSize(name));
  out.u32(macho::kDylibSize);
  // No time stamp: the same input must give the same bytes.
  out.u32(kind == macho::kIdDylib ? 1 : 2);
  out.u32(current);
  out.u32(compatibility);
  out.text(name);
  out.fillTo(start + dylibSize(name));
}

void table(Writer& out, const Table& table) {
  out.u32(table.offset);
  out.u32(table.size);
}

void symbolTables(Writer& out, const LinkEdit& edit) {
  command(out, macho::kDyldInfoOnly, macho::kDyldInfoSize);
  for (const Table& each : {edit.rebase, edit.bind, Table{}, Table{}, edit.exports})
    table(out, each);
  command(out, macho::kSymtab, macho::kSymtabSize);
  out.u32(edit.symbols.offset);
  out.u32(edit.symbols.size / macho::kNlistSize);
  table(out, edit.names);
  command(out, macho::kDysymtab, macho::kDysymtabSize);
  // Local, exported, then imported symbols, each as first index and count.
  for (const uint32_t field :
       {0u, 0u, 0u, edit.exportCount, edit.exportCount, edit.importCount, 0u, 0u, 0u, 0u, 0u, 0u,
        edit.indirect.offset, edit.indirect.size / 4, 0u, 0u, 0u, 0u})
    out.u32(field);
}

}  // namespace

uint32_t headerSize(size_t sectionCount, const LinkOptions& options) {
  return macho::kHeaderSize32 + commandSize(sectionCount, options) + macho::kLinkeditDataSize;
}

Header makeHeader(const Layout& layout, const LinkEdit& edit, uint32_t minimumVersion,
                  const LinkOptions& options) {
  Header header;
  Writer out;
  const Kind kind = kindOf(options);
  // Segments, the loader's table, two symbol tables, UUID, version and data in code; a library's
  // name.
  const auto commandCount =
      static_cast<uint32_t>(9 + (options.isBundle ? 0 : 1) + options.libraries.size());
  for (const uint32_t field :
       {macho::kMagic32, macho::kCpuArm, macho::kSubtypeArmV7, uint32_t{kind.type}, commandCount,
        commandSize(layout.sections.size(), options),
        macho::kNoUndefs | macho::kDyldLink | macho::kTwoLevel | kind.flags})
    out.u32(field);
  segments(out, layout);
  symbolTables(out, edit);
  if (!options.isBundle)
    dylib(out, macho::kIdDylib, options.installName, options.currentVersion, 0x10000);
  command(out, macho::kUuid, macho::kUuidSize);
  header.uuid = out.size();
  out.fillTo(out.size() + 16);
  command(out, macho::kVersionMinIphoneos, macho::kVersionMinSize);
  out.u32(minimumVersion);
  out.u32(minimumVersion);
  for (const StubLibrary& library : options.libraries)
    dylib(out, library.isWeak ? macho::kLoadWeakDylib : macho::kLoadDylib, library.installName,
          library.currentVersion, library.compatibilityVersion);
  command(out, macho::kDataInCode, macho::kLinkeditDataSize);
  table(out, edit.dataInCode);
  header.bytes = out.take();
  return header;
}

}  // namespace varnix::device
