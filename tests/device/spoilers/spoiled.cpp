#include "device/spoilers/spoiled.h"

#include <algorithm>
#include <stdexcept>

#include "macho/format.h"
#include "signer/format.h"

namespace device_test {

namespace macho = device::macho;

namespace {

[[noreturn]] void missing(std::string_view what) {
  throw std::runtime_error("the sample has no " + std::string(what));
}

struct FieldPlace {
  uint64_t narrow, wide;
  bool isWord;
};

constexpr FieldPlace kSegmentFields[] = {{24, 24, true}, {28, 32, true},  {32, 40, true},
                                         {36, 48, true}, {40, 56, false}, {44, 60, false}};
constexpr FieldPlace kSectionFields[] = {{32, 32, true},  {36, 40, true},  {40, 48, false},
                                         {44, 52, false}, {52, 60, false}, {56, 64, false},
                                         {60, 68, false}, {64, 72, false}};

}  // namespace

void Spoiled::put32(uint64_t place, uint32_t value) { device::put32(bytes, place, value); }

void Spoiled::putBig32(uint64_t place, uint32_t value) { put32(place, __builtin_bswap32(value)); }

void Spoiled::putText(uint64_t place, std::string_view text) {
  for (const char c : text) put8(place++, static_cast<uint8_t>(c));
}

void Spoiled::putWord(uint64_t place, uint64_t value) {
  if (is64()) device::put64(bytes, place, value);
  else put32(place, static_cast<uint32_t>(value));
}

uint32_t Spoiled::u32(uint64_t place) const { return device::Reader(bytes).u32(place); }

uint64_t Spoiled::at(uint64_t address) const {
  const auto place = sound.image.place(address);
  if (!place) missing("such address");
  return *place;
}

uint64_t Spoiled::wordAt(uint64_t address) const {
  const device::Reader file(bytes);
  return is64() ? file.u64(at(address)) : file.u32(at(address));
}

uint64_t Spoiled::command(uint32_t kind, size_t index) const {
  for (const device::LoadCommand& each : sound.image.commands)
    if (each.kind == kind && index-- == 0) return each.at;
  missing("load command of a kind");
}

uint64_t Spoiled::tableCommand() const {
  return command(is64() ? uint32_t{macho::kFunctionStarts} : uint32_t{macho::kDataInCode});
}

uint64_t Spoiled::segment(std::string_view name) const {
  for (const device::LoadCommand& each : sound.image.commands)
    if ((each.kind == macho::kSegment || each.kind == macho::kSegment64) &&
        each.bytes.fixedText(8, 16) == name)
      return each.at;
  missing(name);
}

void Spoiled::segment(std::string_view name, SegmentField field, uint64_t value) {
  const FieldPlace& place = kSegmentFields[static_cast<size_t>(field)];
  const uint64_t where = segment(name) + (is64() ? place.wide : place.narrow);
  if (place.isWord) putWord(where, value);
  else put32(where, static_cast<uint32_t>(value));
}

uint64_t Spoiled::section(std::string_view name) const {
  const uint64_t header = is64() ? 72 : 56, size = is64() ? 80 : 68;
  for (const device::LoadCommand& each : sound.image.commands) {
    if (each.kind != macho::kSegment && each.kind != macho::kSegment64) continue;
    for (uint64_t at = header; at + size <= each.bytes.size(); at += size)
      if (each.bytes.fixedText(at, 16) == name) return each.at + at;
  }
  missing(name);
}

void Spoiled::section(std::string_view name, SectionField field, uint64_t value) {
  const FieldPlace& place = kSectionFields[static_cast<size_t>(field)];
  const uint64_t where = section(name) + (is64() ? place.wide : place.narrow);
  if (place.isWord) putWord(where, value);
  else put32(where, static_cast<uint32_t>(value));
}

const device::SectionHeader& Spoiled::header(std::string_view name) const {
  const device::SectionHeader* found = sound.image.section(name);
  if (found == nullptr) missing(name);
  return *found;
}

uint64_t Spoiled::info(Info table) const {
  return (*sound.image.loaderInfo)[static_cast<size_t>(table)];
}

uint64_t Spoiled::infoSize(Info table) const {
  return (*sound.image.loaderInfo)[static_cast<size_t>(table) + 1];
}

void Spoiled::info(Info table, uint32_t offset, uint32_t size) {
  const uint64_t field = command(macho::kDyldInfoOnly) + 8 + 4 * static_cast<uint64_t>(table);
  put32(field, offset);
  put32(field + 4, size);
}

uint64_t Spoiled::step(Info table, device::FixupStep::Kind kind, size_t index) const {
  const auto stream =
      table == Info::rebases ? device::FixupStream::rebases : device::FixupStream::binds;
  device::FixupSteps steps(stream, sound.image.bytes.part(info(table), infoSize(table)), word());
  for (uint64_t place = 0;; place = steps.position()) {
    const auto each = steps.next();
    if (!each) missing("such step");
    if (each->kind == kind && index-- == 0) return info(table) + place;
  }
}

void Spoiled::replace(Info table, std::span<const uint8_t> opcodes) {
  if (opcodes.size() > infoSize(table)) throw std::runtime_error("no room for these opcodes");
  const auto start = bytes.begin() + static_cast<long>(info(table));
  std::fill(start, start + static_cast<long>(infoSize(table)), uint8_t{0});
  std::copy(opcodes.begin(), opcodes.end(), start);
}

uint64_t Spoiled::directory(size_t index) const {
  for (const device::SignatureBlob& each : sound.signature.blobs)
    if (device::isDirectorySlot(each.slot) && index-- == 0) return signature() + each.offset;
  missing("such directory");
}

uint64_t Spoiled::terminal(std::string_view name) const {
  const device::Reader tree = sound.fixups.exportTree;
  for (uint64_t node = 0;;) {
    device::Cursor cursor(tree, node);
    const uint64_t size = cursor.uleb();
    if (name.empty()) return info(Info::exports) + cursor.position();
    cursor = device::Cursor(tree, cursor.position() + size);
    uint64_t next = 0;
    for (int edges = cursor.u8(); edges > 0; --edges) {
      const std::string_view edge = cursor.text();
      const uint64_t child = cursor.uleb();
      if (!name.starts_with(edge)) continue;
      next = child;
      name.remove_prefix(edge.size());
      break;
    }
    if (next == 0) missing("such export");
    node = next;
  }
}

uint64_t Spoiled::symbol(std::string_view name) const {
  const auto& symbols = sound.fixups.symbols;
  const auto found = std::ranges::find(symbols, name, &device::SymbolEntry::name);
  if (found == symbols.end()) missing(name);
  return (*sound.image.symbolTable)[0] +
         static_cast<uint64_t>(found - symbols.begin()) * (is64() ? 16 : 12);
}

void Spoiled::toggleWeak(std::string_view name) {
  for (size_t i = 0;; ++i) {
    const uint64_t place = step(Info::binds, device::FixupStep::Kind::symbol, i);
    if (sound.image.bytes.text(place + 1) != name) continue;
    const uint64_t description = symbol(name) + 6;
    put8(place, static_cast<uint8_t>(bytes[place] ^ macho::kWeakImport));
    put8(description, static_cast<uint8_t>(bytes[description] ^ macho::kWeakReference));
    return;
  }
}

void Spoiled::renameSymbol(std::string_view old, std::string_view name) {
  const std::string wanted = std::string(old) + '\0';
  for (auto at = bytes.begin() + static_cast<long>(info(Info::rebases));; ++at) {
    at = std::search(at, bytes.begin() + static_cast<long>(signature()), wanted.begin(),
                     wanted.end());
    if (at == bytes.begin() + static_cast<long>(signature())) return;
    std::copy(name.begin(), name.end(), at);
  }
}

void Spoiled::seal() {
  constexpr uint64_t page = device::signature::kPageBytes;
  for (size_t i = 0; i < sound.signature.directories.size(); ++i) {
    const device::Directory& each = sound.signature.directories[i];
    for (uint64_t number = 0; number < each.codeSlots; ++number) {
      const uint64_t from = number * page, to = std::min<uint64_t>(from + page, each.codeLimit);
      if (to > bytes.size()) return;
      const auto digest = each.digestOf(std::span(bytes).subspan(from, to - from));
      std::copy(digest.begin(), digest.end(),
                bytes.begin() +
                    static_cast<long>(directory(i) + each.hashOffset + number * each.hashSize));
    }
  }
}

}  // namespace device_test
