// Ways to break the rules of rebases and binds.
#include "device/spoilers/spoiled.h"
#include "macho/format.h"

namespace device_test {

namespace {

namespace macho = device::macho;
using Kind = device::FixupStep::Kind;

const device::SegmentCommand& dataOf(const Spoiled& it) {
  return *it.sound.image.segment("__DATA");
}

/// A number that nothing points to and the loader does not change.
uint64_t plainWord(const Spoiled& it) {
  for (const device::SymbolEntry& symbol : it.sound.fixups.symbols)
    if (symbol.name == "_ruledNumber") return symbol.value - dataOf(it).address;
  return 0;
}

/// Opcodes that rebase words at these distances in the segment.
Bytes rebasing(uint8_t segment, std::initializer_list<uint64_t> distances) {
  device::Writer out;
  out.u8(macho::kRebaseSetTypeImm | macho::kPointer);
  for (const uint64_t distance : distances) {
    out.u8(macho::kRebaseSetSegmentAndOffsetUleb | segment);
    out.uleb(distance);
    out.u8(macho::kRebaseDoImmTimes | 1);
  }
  out.u8(0);
  return out.take();
}

/// Opcodes that bind _use at these distances in the data.
Bytes binding(const Spoiled& it, std::initializer_list<uint64_t> distances,
              const char* symbol = "_use") {
  const uint16_t library = it.sound.fixups.imports.at("_use")->description >> 8;
  device::Writer out;
  out.u8(static_cast<uint8_t>(macho::kBindSetDylibOrdinalImm | library));
  out.u8(macho::kBindSetTypeImm | macho::kPointer);
  if (symbol != nullptr) {
    out.u8(macho::kBindSetSymbolTrailingFlagsImm);
    out.text(symbol);
  }
  for (const uint64_t distance : distances) {
    out.u8(macho::kBindSetSegmentAndOffsetUleb | 1);
    out.uleb(distance);
    out.u8(macho::kBindDo);
  }
  out.u8(0);
  return out.take();
}

/// Changes the low bits of an opcode.
void immediate(Spoiled& it, uint64_t place, uint8_t value) {
  it.put8(place, static_cast<uint8_t>((it.bytes[place] & 0xf0) | value));
}

const Spoiler kFixupSpoilers[] = {
    {"rebases.opcodes", "unknown",
     [](Spoiled& it) { it.put8(it.step(Info::rebases, Kind::done), 0x90); }},
    {"rebases.opcodes", "a number without an end",
     [](Spoiled& it) {
       const uint64_t place = it.step(Info::rebases, Kind::segment);
       for (uint64_t i = place + 1; i < it.info(Info::rebases) + it.infoSize(Info::rebases); ++i)
         it.put8(i, 0xff);
     }},
    {"rebases.segment", "none such",
     [](Spoiled& it) { immediate(it, it.step(Info::rebases, Kind::segment), 7); }},
    {"rebases.type", "a distance",
     [](Spoiled& it) { immediate(it, it.step(Info::rebases, Kind::type), macho::kRelative32); }},
    {"rebases.writable", "code",
     [](Spoiled& it) { it.replace(Info::rebases, rebasing(0, {0x1000})); }},
    {"rebases.writable", "link information",
     [](Spoiled& it) { it.replace(Info::rebases, rebasing(2, {8})); }},
    {"rebases.inside",
     "behind the segment",
     [](Spoiled& it) { it.replace(Info::rebases, rebasing(1, {dataOf(it).size})); },
     {"rebases.target"}},
    {"rebases.in-file", "a zero of no file",
     [](Spoiled& it) {
       const uint64_t zeros = it.header("__bss").address - dataOf(it).address;
       it.segment("__DATA", SegmentField::fileSize, zeros);
       it.replace(Info::rebases, rebasing(1, {zeros}));
     }},
    {"rebases.aligned", "in the middle of one",
     [](Spoiled& it) {
       const uint64_t zeros = it.header("__bss").address - dataOf(it).address;
       it.replace(Info::rebases, rebasing(1, {zeros + 2}));
     }},
    {"rebases.once", "twice",
     [](Spoiled& it) {
       const uint64_t word = it.sound.fixups.rebases.words[0].address - dataOf(it).address;
       it.replace(Info::rebases, rebasing(1, {word, word}));
     }},
    {"rebases.target", "outside",
     [](Spoiled& it) { it.putWordAt(it.sound.fixups.rebases.words[0].address, 0x7f000000); }},
    {"binds.opcodes", "unknown",
     [](Spoiled& it) { it.put8(it.step(Info::binds, Kind::library), 0xd0); }},
    {"binds.opcodes", "a name without an end",
     [](Spoiled& it) {
       const uint64_t place = it.step(Info::binds, Kind::symbol);
       for (uint64_t i = place + 1; i < it.info(Info::binds) + it.infoSize(Info::binds); ++i)
         it.put8(i, 'x');
     }},
    {"binds.segment", "none such",
     [](Spoiled& it) { immediate(it, it.step(Info::binds, Kind::segment), 8); }},
    {"binds.segment",
     "none such, lazily",
     [](Spoiled& it) { immediate(it, it.step(Info::lazyBinds, Kind::segment), 8); },
     {},
     "arm64"},
    {"binds.type", "a distance",
     [](Spoiled& it) { immediate(it, it.step(Info::binds, Kind::type), macho::kRelative32); }},
    {"binds.writable", "code",
     [](Spoiled& it) { immediate(it, it.step(Info::binds, Kind::segment), 0); }},
    {"binds.inside", "behind the segment",
     [](Spoiled& it) { it.replace(Info::binds, binding(it, {dataOf(it).size})); }},
    {"binds.symbol",
     "none",
     [](Spoiled& it) { it.replace(Info::binds, binding(it, {plainWord(it)}, nullptr)); },
     {"binds.offered", "binds.symbol-table"}},
    {"binds.library",
     "the fourteenth",
     [](Spoiled& it) { immediate(it, it.step(Info::binds, Kind::library), 14); },
     {"binds.home", "binds.symbol-table"}},
    {"binds.once", "twice",
     [](Spoiled& it) { it.replace(Info::binds, binding(it, {plainWord(it), plainWord(it)})); }},
    {"binds.not-rebased", "a rebased word",
     [](Spoiled& it) {
       const uint64_t word = it.sound.fixups.rebases.words[0].address - dataOf(it).address;
       it.replace(Info::binds, binding(it, {word}));
     }},
    {"binds.symbol-table",
     "another name",
     [](Spoiled& it) { it.put8(it.step(Info::binds, Kind::symbol) + 3, 'X'); },
     {"binds.offered"}},
    {"binds.symbol-table", "another library",
     [](Spoiled& it) {
       const uint64_t field = it.symbol("_use") + 6;
       it.put8(field + 1, static_cast<uint8_t>(it.bytes[field + 1] ^ 1));
     }},
    {"binds.symbol-table", "that it may be missing",
     [](Spoiled& it) {
       const uint64_t field = it.symbol("_use") + 6;
       it.put8(field, static_cast<uint8_t>(it.bytes[field] | macho::kWeakReference));
     }},
    {"binds.offered", "what no library has", [](Spoiled& it) { it.renameSymbol("_use", "_abc"); }},
    {"binds.home",
     "a class of another library",
     [](Spoiled& it) {
       const auto libraries = it.sound.image.libraries;
       uint8_t other = 1;
       while (!libraries[other - 1u].name.ends_with("UIKit")) ++other;
       device::Writer out;
       out.u8(macho::kBindSetDylibOrdinalImm | other);
       out.u8(macho::kBindSetTypeImm | macho::kPointer);
       out.u8(macho::kBindSetSymbolTrailingFlagsImm);
       out.text("__objc_empty_cache");
       out.u8(macho::kBindSetSegmentAndOffsetUleb | 1);
       out.uleb(plainWord(it));
       out.u8(macho::kBindDo);
       it.replace(Info::binds, out.take());
     },
     {"binds.offered", "binds.symbol-table"}},
    {"binds.not-weak",
     "some",
     [](Spoiled& it) { it.info(Info::weakBinds, static_cast<uint32_t>(it.info(Info::binds)), 4); },
     {"link-edit.apart"}},
};

}  // namespace

std::span<const Spoiler> fixupSpoilers() { return kFixupSpoilers; }

}  // namespace device_test
