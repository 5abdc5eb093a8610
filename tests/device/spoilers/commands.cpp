// Ways to break the rules of headers, load commands and linked libraries.
#include "device/spoilers/spoiled.h"
#include "macho/format.h"

namespace device_test {

namespace {

namespace macho = device::macho;

constexpr uint64_t kFlags = 24, kCommandCount = 16, kCommandRoom = 20;

void addFlags(Spoiled& it, uint32_t flags) { it.put32(kFlags, it.u32(kFlags) | flags); }

uint64_t lastCommand(const Spoiled& it) { return it.sound.image.commands.back().at; }

/// The load commands that name libraries.
std::vector<const device::LoadCommand*> libraryCommands(const Spoiled& it) {
  std::vector<const device::LoadCommand*> result;
  for (const device::LoadCommand& each : it.sound.image.commands)
    if (each.kind == macho::kLoadDylib || each.kind == macho::kLoadWeakDylib)
      result.push_back(&each);
  return result;
}

/// The place of the command for the library whose name ends like that.
uint64_t libraryNamed(const Spoiled& it, std::string_view end) {
  const auto& libraries = it.sound.image.libraries;
  size_t index = 0;
  while (!libraries.at(index).name.ends_with(end)) ++index;
  return libraryCommands(it).at(index)->at;
}

const Spoiler kCommandSpoilers[] = {
    {"file.whole",
     "symbols behind the file",
     [](Spoiled& it) { it.put32(it.command(macho::kSymtab) + 8, 0x7fffff00); },
     {"link-edit.inside"}},
    {"header.size", "cut short", [](Spoiled& it) { it.bytes.resize(4000); }},
    {"header.magic", "another number", [](Spoiled& it) { it.put32(0, 0x12345678); }},
    {"header.magic", "big-endian", [](Spoiled& it) { it.putBig32(0, it.u32(0)); }},
    {"header.processor", "an Intel one", [](Spoiled& it) { it.put32(4, 7); }},
    {"header.processor", "armv7k or arm64e", [](Spoiled& it) { it.put32(8, it.is64() ? 2 : 12); }},
    {"header.type",
     "an executable",
     [](Spoiled& it) { it.put32(12, 2); },
     {"commands.install-name"}},
    {"header.two-level", "flat",
     [](Spoiled& it) { it.put32(kFlags, it.u32(kFlags) & ~macho::kTwoLevel); }},
    {"header.two-level", "not to be bound",
     [](Spoiled& it) { it.put32(kFlags, it.u32(kFlags) & ~macho::kDyldLink); }},
    {"header.two-level", "forced flat", [](Spoiled& it) { addFlags(it, macho::kForceFlat); }},
    {"header.not-prebound", "prebound",
     [](Spoiled& it) { addFlags(it, macho::kHasPreboundAddresses); }},
    {"header.not-prebound", "split", [](Spoiled& it) { addFlags(it, macho::kSplitSegments); }},
    {"header.not-weak", "defines", [](Spoiled& it) { addFlags(it, macho::kWeakDefines); }},
    {"header.not-weak", "uses", [](Spoiled& it) { addFlags(it, macho::kBindsToWeak); }},
    {"commands.size", "four bytes", [](Spoiled& it) { it.put32(lastCommand(it) + 4, 4); }},
    {"commands.size", "one more",
     [](Spoiled& it) {
       it.put32(kCommandCount, it.u32(kCommandCount) + 1);
       it.put32(it.sound.image.headerSize() + it.u32(kCommandRoom) + 4, 0);
     }},
    {"commands.room", "too little room",
     [](Spoiled& it) { it.put32(kCommandRoom, it.u32(kCommandRoom) - 8); }},
    {"commands.room", "a huge one", [](Spoiled& it) { it.put32(lastCommand(it) + 4, 0x7fffffff); }},
    {"commands.room", "sections that leave theirs",
     [](Spoiled& it) { it.put32(it.segment("__TEXT") + (it.is64() ? 64 : 48), 1000); }},
    {"commands.width",
     "the other segment",
     [](Spoiled& it) {
       it.put32(it.segment("__LINKEDIT"), it.is64() ? macho::kSegment : macho::kSegment64);
     },
     {"segments.link-edit-last"}},
    {"commands.known", "an unknown one that is required",
     [](Spoiled& it) { it.put32(it.command(macho::kUuid), 0x80000033); }},
    {"commands.known", "chained fixups",
     [](Spoiled& it) { it.put32(it.command(macho::kUuid), macho::kChainedFixups); }},
    {"commands.loader-info", "none",
     [](Spoiled& it) { it.put32(it.command(macho::kDyldInfoOnly), 0x16); }},
    {"commands.symbols", "no symbols",
     [](Spoiled& it) { it.put32(it.command(macho::kSymtab), 0x16); }},
    {"commands.symbols", "no indirect symbols",
     [](Spoiled& it) { it.put32(it.command(macho::kDysymtab), 0x16); }},
    {"commands.no-relocations", "to others",
     [](Spoiled& it) { it.put32(it.command(macho::kDysymtab) + 68, 1); }},
    {"commands.no-relocations", "within",
     [](Spoiled& it) { it.put32(it.command(macho::kDysymtab) + 76, 1); }},
    {"commands.install-name", "none",
     [](Spoiled& it) { it.put32(it.command(macho::kIdDylib), 0x16); }},
    {"commands.install-name", "relative",
     [](Spoiled& it) { it.put8(it.command(macho::kIdDylib) + macho::kDylibSize, 'x'); }},
    {"commands.install-name", "of a bundle", [](Spoiled& it) { it.put32(12, macho::kBundle); }},
    {"commands.one-signature",
     "two",
     [](Spoiled& it) {
       const uint64_t second = it.tableCommand(), first = it.command(0x1d);
       it.put32(second, macho::kCodeSignature);
       for (const uint64_t field : {8, 12}) it.put32(second + field, it.u32(first + field));
     },
     {"link-edit.apart"}},
    {"commands.version", "10.0",
     [](Spoiled& it) { it.put32(it.command(macho::kVersionMinIphoneos) + 8, 0xa0000); }},
    {"commands.version", "none",
     [](Spoiled& it) { it.put32(it.command(macho::kVersionMinIphoneos), 0x16); }},
    {"commands.no-routine", "narrow",
     [](Spoiled& it) { it.put32(it.command(macho::kUuid), 0x11); }},
    {"commands.no-routine", "wide", [](Spoiled& it) { it.put32(it.command(macho::kUuid), 0x1a); }},
    {"commands.not-encrypted", "narrow",
     [](Spoiled& it) { it.put32(it.command(macho::kUuid), macho::kEncryptionInfo); }},
    {"commands.not-encrypted", "wide",
     [](Spoiled& it) { it.put32(it.command(macho::kUuid), macho::kEncryptionInfo64); }},
    {"libraries.count",
     "none",
     [](Spoiled& it) {
       for (const auto* each : libraryCommands(it)) it.put32(each->at, 0x16);
     },
     {"libraries.system", "binds.library", "binds.home"}},
    {"libraries.name",
     "outside of its command",
     [](Spoiled& it) { it.put32(libraryNamed(it, "UIKit") + 8, 4096); },
     {"binds.home"}},
    {"libraries.name",
     "no path",
     [](Spoiled& it) { it.put8(libraryNamed(it, "UIKit") + macho::kDylibSize, 'x'); },
     {}},
    {"libraries.compatibility", "999",
     [](Spoiled& it) { it.put32(libraryNamed(it, "UIKit") + 20, 999 << 16); }},
    {"libraries.system",
     "called otherwise",
     [](Spoiled& it) {
       it.putText(libraryNamed(it, "libSystem.B.dylib") + macho::kDylibSize, "/usr/lib/libSystex");
     },
     {"binds.home"}},
};

}  // namespace

std::span<const Spoiler> commandSpoilers() { return kCommandSpoilers; }

}  // namespace device_test
