// What the 32-bit linker refuses, and the reason that it gives.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/toolbox.h"
#include "macho/error.h"
#include "macho/files.h"

namespace {

using namespace device_test;
using testing::HasSubstr;
namespace device = varnix::device;

/// Why linking fails; empty if it does not.
std::string refusal(const Bytes& object, const device::LinkOptions& with = options()) {
  try {
    linked(object, with);
  } catch (const device::Error& error) {
    return error.what();
  }
  return {};
}

std::string refusalOf(const std::string& source, const device::LinkOptions& with = options()) {
  return refusal(assemble(source), with);
}

constexpr const char* kThumb = R"(
  .syntax unified
  .section __TEXT,__text,regular,pure_instructions
  .code 16
  .globl _start
  .thumb_func _start
  _start:
)";

const std::string kData = "\n.section __DATA,__data\n.globl _data\n_data: .long 0\n";

TEST(DeviceLinkerRefusals, AnObjectThatIsFineHasNone) {
  EXPECT_EQ(refusalOf(kThumb + std::string("bl _called\n") + kData, options({"_start"})), "");
}

TEST(DeviceLinkerRefusals, AddressesWithinCode) {
  EXPECT_THAT(refusalOf(kThumb + std::string("movw r0, :lower16:_data\n") + kData),
              HasSubstr("__TEXT,__text: ARM_RELOC_HALF at 0x0: code that holds an address"));
  EXPECT_THAT(refusalOf(kThumb + std::string(".long _data\n") + kData),
              HasSubstr("the loader would have to write into the code"));
  EXPECT_THAT(refusalOf(kThumb + kData + ".section __TEXT,__const\n.long _data\n"),
              HasSubstr("__TEXT,__const: constant data that holds an address"));
}

TEST(DeviceLinkerRefusals, ArmInstructions) {
  const std::string arm = ".section __TEXT,__text,regular,pure_instructions\n.globl _a\n_a: ";
  EXPECT_THAT(refusalOf(arm + "bl _called\n"), HasSubstr("ARM_RELOC_BR24 at 0x0: Arm instr"));
  EXPECT_THAT(refusalOf(arm + "nop\n"), HasSubstr("_a: code that is not Thumb"));
  EXPECT_THAT(refusalOf(arm + "movw r0, :lower16:(_data-_a)\n" + kData),
              HasSubstr("ARM_RELOC_HALF_SECTDIFF at 0x0: Arm instructions"));
}

TEST(DeviceLinkerRefusals, BranchesPastAFunction) {
  EXPECT_THAT(refusalOf(kThumb + std::string("bl _called+4\n")), HasSubstr("past its symbol"));
}

TEST(DeviceLinkerRefusals, DifferencesThatAreNotWords) {
  EXPECT_THAT(refusalOf(kThumb + std::string("nop\n") + kData + ".short _data - _start\n"),
              HasSubstr("ARM_RELOC_SECTDIFF at 0x4: not four bytes long"));
}

/// One entry of a section's relocations, as two words.
std::string refusalOfEntry(std::vector<uint32_t> words) {
  device::Writer out;
  for (const uint32_t word : words) out.u32(word);
  const Bytes table = out.take();
  try {
    device::readRelocations(device::Reader(table), 0, static_cast<uint32_t>(words.size() / 2), 16);
  } catch (const device::Error& error) {
    return error.what();
  }
  return {};
}

/// The second word of a plain entry: number, relative, log2 of the length, external, kind.
constexpr uint32_t plain(uint32_t kind, uint32_t length = 2, bool isRelative = false) {
  return 1 | (isRelative ? 1u << 24 : 0) | length << 25 | kind << 28;
}
constexpr uint32_t scattered(uint32_t kind, uint32_t offset, uint32_t length = 2,
                             bool isRelative = false) {
  return 0x80000000 | (isRelative ? 1u << 30 : 0) | length << 28 | kind << 24 | offset;
}

TEST(DeviceLinkerRefusals, EveryKindThatIsNotHandled) {
  const std::map<uint32_t, std::string> kinds{
      {1, "ARM_RELOC_PAIR at 0x4: a second half without a first"},
      {4, "ARM_RELOC_PB_LA_PTR at 0x4: not handled"},
      {5, "ARM_RELOC_BR24 at 0x4: Arm instructions; compile with -mthumb"},
      {7, "ARM_THUMB_32BIT_BRANCH at 0x4: not handled"},
      {8, "ARM_RELOC_HALF at 0x4: code that holds an address; compile position-independent"},
      {10, "relocation kind 10 at 0x4: not handled"},
      {11, "relocation kind 11 at 0x4: not handled"},
      {12, "relocation kind 12 at 0x4: not handled"},
      {13, "relocation kind 13 at 0x4: not handled"},
      {14, "relocation kind 14 at 0x4: not handled"},
      {15, "relocation kind 15 at 0x4: not handled"}};
  for (const auto& [kind, message] : kinds) {
    EXPECT_EQ(refusalOfEntry({4, plain(kind)}), message);
    EXPECT_EQ(refusalOfEntry({scattered(kind, 4), 0}), message);
  }
}

TEST(DeviceLinkerRefusals, HandledKindsInStrangeShapes) {
  const std::string relative = ": relative to the place itself";
  EXPECT_EQ(refusalOfEntry({4, plain(0, 2, true)}), "ARM_RELOC_VANILLA at 0x4" + relative);
  EXPECT_EQ(refusalOfEntry({scattered(0, 4, 2, true), 0}), "ARM_RELOC_VANILLA at 0x4" + relative);
  for (const uint32_t length : {0u, 1u, 3u})
    EXPECT_EQ(refusalOfEntry({4, plain(0, length)}),
              "ARM_RELOC_VANILLA at 0x4: not four bytes long");
  EXPECT_EQ(refusalOfEntry({4, plain(6)}), "ARM_THUMB_RELOC_BR22 at 0x4: not a branch");
  EXPECT_EQ(refusalOfEntry({scattered(6, 4, 2, true), 0}),
            "ARM_THUMB_RELOC_BR22 at 0x4: a branch past its symbol");
  for (const uint32_t kind : {2u, 3u, 9u})
    EXPECT_THAT(refusalOfEntry({4, plain(kind)}), HasSubstr(": a difference of symbols"));
  EXPECT_EQ(refusalOfEntry({scattered(2, 4), 0}),
            "ARM_RELOC_SECTDIFF at 0x4: the second half is missing");
  EXPECT_EQ(refusalOfEntry({scattered(3, 4), 0, 4, plain(0)}),
            "ARM_RELOC_LOCAL_SECTDIFF at 0x4: the second half is missing");
  EXPECT_EQ(refusalOfEntry({13, plain(0)}), "ARM_RELOC_VANILLA at 0xd: outside its section");
  EXPECT_EQ(refusalOfEntry({12, plain(0)}), "");
  EXPECT_EQ(refusalOfEntry({scattered(3, 4), 0, scattered(1, 0), 0}), "");
}

TEST(DeviceLinkerRefusals, SymbolsThatNoLibraryOffers) {
  EXPECT_EQ(refusalOf(kThumb + std::string("bl _unheard\nbl _called\nbl _neither\n")),
            "no library offers:\n  _neither\n  _unheard");
}

TEST(DeviceLinkerRefusals, SymbolsThatTwoLibrariesOffer) {
  device::LinkOptions with = options();
  with.libraries.push_back(stubLibrary("third", {"_called"}));
  EXPECT_EQ(refusalOf(kThumb + std::string("bl _called\n"), with),
            "_called is offered by /usr/lib/first.dylib and by /usr/lib/third.dylib");
}

TEST(DeviceLinkerRefusals, ExportsThatAreNone) {
  const std::string source = kThumb + std::string("bl _called\n");
  EXPECT_EQ(refusalOf(source, options({"_missing"})), "to be exported, but not defined: _missing");
  EXPECT_EQ(refusalOf(source, options({"_called"})), "to be exported, but not defined: _called");
  EXPECT_EQ(refusalOf(source, options({"_start", "_start"})), "to be exported twice: _start");
  const std::string hidden = ".private_extern _start\n" + source;
  EXPECT_EQ(refusalOf(hidden, options({"_start"})), "to be exported, but not defined: _start");
  const std::string weak = ".weak_definition _start\n" + source;
  EXPECT_EQ(refusalOf(weak, options({"_start"})), "to be exported, but a weak definition: _start");
}

TEST(DeviceLinkerRefusals, SymbolsOfStrangeKinds) {
  EXPECT_EQ(refusalOf(".comm _common,4\n"), "_common: compile with -fno-common");
  EXPECT_EQ(refusalOf(".globl _absolute\n_absolute = 5\n"),
            "_absolute: neither undefined nor in a section");
}

TEST(DeviceLinkerRefusals, SectionsOfStrangeKinds) {
  EXPECT_EQ(refusalOf(".section __DATA,__thread_vars,thread_local_variables\n.long 0\n"),
            "section __DATA,__thread_vars: type 19 is not handled");
  EXPECT_EQ(refusalOf(".section __DWARF,__debug_line\n.long 0\n"),
            "section __DWARF,__debug_line: only __TEXT and __DATA can be linked");
  EXPECT_EQ(refusalOf(".section __DATA,__data\n.p2align 15\n.long 0\n"),
            "section __DATA,__data: aligned to more than a page");
  EXPECT_THAT(refusalOf(".zerofill __DATA,__bss,_zeros,16777216,2\n"),
              HasSubstr("larger than 16 MiB"));
}

TEST(DeviceLinkerRefusals, ABundleWithANameAndALibraryWithout) {
  device::LinkOptions with = options();
  with.isBundle = true;
  EXPECT_EQ(refusalOf(kThumb, with), "a bundle has no install name");
  with.installName.clear();
  EXPECT_EQ(refusalOf(kThumb, with), "");
  with.isBundle = false;
  EXPECT_EQ(refusalOf(kThumb, with), "a library needs an install name");
}

/// What the command says to these words, for an object that could be linked.
Ran linkedByCommand(const std::string& words) {
  const Folder folder;
  device::writeFile(folder / "it.o", assemble(kThumb));
  writeText(folder / "stub.tbd",
            "--- !tapi-tbd\ntbd-version: 4\ntargets: [ armv7-ios ]\n"
            "install-name: /usr/lib/libSystem.B.dylib\n...\n");
  writeText(folder / "exports", "_start\n");
  return run(VARNIX_DEVICE_TOOLS "/varnix-link-armv7 " + (folder / "it.o") + " " +
             (folder / "stub.tbd") + " --exports " + (folder / "exports") + " -o " +
             (folder / "it") + " " + words);
}

TEST(DeviceLinkerRefusals, CommandLinesThatAskForBoth) {
  EXPECT_EQ(linkedByCommand("--bundle").status, 0);
  EXPECT_EQ(linkedByCommand("--install-name /it --current-version 1.0").status, 0);
  for (const auto& [words, message] : std::map<std::string, std::string>{
           {"--bundle --install-name /it", "--install-name excludes --bundle"},
           {"--bundle --current-version 1.0", "--current-version excludes --bundle"},
           {"--install-name /it", "--current-version is required"},
           {"--current-version 1.0", "--install-name is required"},
           {"--install-name '' --current-version 1.0", "a library needs an install name"}}) {
    const Ran ran = linkedByCommand(words);
    EXPECT_NE(ran.status, 0) << words;
    EXPECT_THAT(ran.output, HasSubstr(message)) << words;
  }
}

TEST(DeviceLinkerRefusals, OtherFiles) {
  const std::string message = "not an object file for armv7";
  EXPECT_EQ(refusal(assemble(".long 0\n", "arm64-apple-ios9.3")), message);
  EXPECT_EQ(refusal(assemble(".long 0\n", "armv7s-apple-ios9.3")), message);
  EXPECT_EQ(refusal(linked(assemble(kThumb), options())), message);
  EXPECT_THAT(refusalOf(".linker_option \"-lz\"\n"), HasSubstr("load command 0x2d is not handled"));
  EXPECT_THAT(refusal(Bytes()), HasSubstr("cut short"));
}

TEST(DeviceLinkerRefusals, MoreLibrariesThanNumbers) {
  device::LinkOptions with = options();
  for (int i = 0; i < 252; ++i) with.libraries.push_back(stubLibrary(std::to_string(i), {}));
  EXPECT_EQ(refusalOf(kThumb, with), "more than 253 libraries");
}

}  // namespace
