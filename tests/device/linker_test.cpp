// The 32-bit linker: each kind of relocation, and how llvm's tools read the library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/toolbox.h"
#include "linker/thumb.h"

namespace {

using namespace device_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
namespace device = varnix::device;

constexpr const char* kText = R"(
  .syntax unified
  .section __TEXT,__text,regular,pure_instructions
  .code 16
)";

std::string function(const std::string& name, const std::string& body = "bx lr\n",
                     const std::string& visibility = ".globl") {
  return visibility + " " + name + "\n.p2align 1\n.thumb_func " + name + "\n" + name + ":\n" +
         body + "\n";
}

std::string dataSection(const std::string& body) {
  return "\n.section __DATA,__data\n.p2align 2\n.globl _data\n_data:\n" + body + "\n";
}

TEST(DeviceLinker, BranchesToFunctionsAndThroughStubs) {
  const ReadBack library(linked(assemble(kText + function("_start", R"(
      push {r7, lr}
      bl _near
      bl _called
      blx _called
      bl _other
      b.w _called
    )") + function("_near")),
                                options({"_start", "_near"})));
  const uint32_t start = library.exports()["_start"] - 1;
  const auto code = library.code();
  EXPECT_EQ(code.at(start + 2), std::string("bl _near"));
  EXPECT_EQ(code.at(start + 6).substr(0, 3), "bl ");
  EXPECT_THAT(code.at(start + 6), HasSubstr("symbol stub for: _called"));
  // Stubs are Thumb code, so there is no switch of instruction sets.
  EXPECT_EQ(code.at(start + 10).substr(0, 3), "bl ");
  EXPECT_THAT(code.at(start + 10), HasSubstr("symbol stub for: _called"));
  EXPECT_THAT(code.at(start + 14), HasSubstr("symbol stub for: _other"));
  EXPECT_THAT(code.at(start + 18), HasSubstr("b.w"));
  EXPECT_THAT(library.binds(), ElementsAre("__got+0 first _called", "__got+4 second _other"));
}

/// The value that movw, movt and "add pc" at an address load.
uint32_t loaded(const std::map<uint32_t, std::string>& code, uint32_t at) {
  const auto immediate = [&](uint32_t place, const std::string& name) {
    const auto found = findAll(code.at(place), name + " \\w+, #(0x[0-9a-f]+)");
    return found.empty() ? 0xbad0bad0 : hexadecimal(found[0][1]);
  };
  EXPECT_THAT(code.at(at + 8), testing::MatchesRegex("add .*, pc"));
  return (immediate(at + 4, "movt") << 16 | immediate(at, "movw")) + at + 8 + 4;
}

TEST(DeviceLinker, StubsJumpWhereTheirPointersPoint) {
  const ReadBack library(
      linked(assemble(kText + function("_start", "bl _other\nbl _called")), options({"_start"})));
  const auto code = library.code();
  const uint32_t stubs = library.section("__stubs").address;
  ASSERT_EQ(library.section("__stubs").size, 32u);
  EXPECT_THAT(library.objdump("--macho --indirect-symbols"), HasSubstr("_called\n"));
  const std::string all =
      library.objdump("-d --triple=thumbv7-apple-ios --section=__stubs --no-show-raw-insn");
  std::map<uint32_t, std::string> lines;
  for (const auto& match : findAll(all, "\n +([0-9a-f]+):\\s+([^\n]+)")) {
    std::string line = match[2];
    std::replace(line.begin(), line.end(), '\t', ' ');
    lines[hexadecimal(match[1])] = line;
  }
  for (uint32_t i = 0; i < 2; ++i) {
    const uint32_t at = stubs + i * 16;
    EXPECT_EQ(loaded(lines, at), library.section("__got").address + i * 4);
    EXPECT_EQ(lines.at(at + 10), "ldr.w pc, [r12]");
  }
}

TEST(DeviceLinker, AddressesInCodeAreRelative) {
  const std::string load = R"(
      movw r0, :lower16:(%-(1f+4))
      movt r0, :upper16:(%-(1f+4))
    1:
      add r0, pc
  )";
  const auto loading = [&](const std::string& symbol) {
    std::string text = load;
    while (text.find('%') != std::string::npos) text.replace(text.find('%'), 1, symbol);
    return text;
  };
  const ReadBack library(linked(
      assemble(kText +
               function("_start", loading("_data") + loading("_near") + loading("_data+70000") +
                                      loading("L_text") + loading("L_pointer")) +
               function("_near") + ".section __TEXT,__const\nL_text: .long 7\n" +
               dataSection(".space 80000") +
               ".section __DATA,__nl_symbol_ptr,non_lazy_symbol_pointers\n.p2align 2\n"
               "L_pointer:\n.indirect_symbol _imported\n.long 0\n"),
      options({"_start", "_near", "_data"})));
  auto exports = library.exports();
  const uint32_t start = exports["_start"] - 1;
  const auto code = library.code();
  EXPECT_EQ(loaded(code, start), exports["_data"]);
  EXPECT_EQ(loaded(code, start + 10), exports["_near"]) << "a function's has the Thumb bit";
  EXPECT_EQ(exports["_near"] & 1, 1u);
  EXPECT_EQ(loaded(code, start + 20), exports["_data"] + 70000);
  EXPECT_EQ(loaded(code, start + 30), library.section("__const").address);
  EXPECT_EQ(loaded(code, start + 40), library.section("__nl_symbol_ptr").address);
  EXPECT_THAT(library.binds(), ElementsAre("__nl_symbol_ptr+0 first _imported"));
}

TEST(DeviceLinker, PointersToWhatIsOurs) {
  const ReadBack library(linked(
      assemble(
          kText + function("_start") + function("_near", "nop\nbx lr", ".private_extern") +
          function("_inner", "bx lr", "@") +
          dataSection(".long _start\n.long _inner\n.long _near\n.long _data+8\n.long _inner+2\n"
                      ".long _zeros+4\n.zerofill __DATA,__bss,_zeros,64,2\n")),
      options({"_start", "_data"})));
  auto exports = library.exports();
  const uint32_t start = exports["_start"], at = exports["_data"];
  EXPECT_EQ(start & 1, 1u);
  EXPECT_EQ(library.word(at), start);
  EXPECT_EQ(library.word(at + 4), start + 6);
  EXPECT_EQ(library.word(at + 8), start + 2);
  EXPECT_EQ(library.word(at + 12), at + 8);
  EXPECT_EQ(library.word(at + 16), start + 8);
  EXPECT_EQ(library.word(at + 20), library.section("__bss").address + 4);
  EXPECT_THAT(library.rebases(), ElementsAre(at, at + 4, at + 8, at + 12, at + 16, at + 20));
}

TEST(DeviceLinker, RunsOfPointersAreRebasedAndGapsAreNot) {
  std::string words;
  for (int i = 0; i < 40; ++i) words += i == 20 ? ".long 1\n" : ".long _data\n";
  const ReadBack library(linked(assemble(dataSection(words)), options({"_data"})));
  std::vector<uint32_t> wanted;
  for (uint32_t i = 0; i < 40; ++i)
    if (i != 20) wanted.push_back(library.section("__data").address + i * 4);
  EXPECT_EQ(library.rebases(), wanted);
}

TEST(DeviceLinker, PointersToWhatIsImported) {
  const ReadBack library(
      linked(assemble(dataSection(".long 5\n.long _imported\n.long _other+12\n.long _imported-4\n"
                                  ".weak_reference _called\n.long _called\n")),
             options({"_data"})));
  EXPECT_THAT(library.binds(),
              ElementsAre("__data+16 first _called (weak_import)", "__data+4 first _imported",
                          "__data+12 first _imported+-4", "__data+8 second _other+12"));
  const uint32_t at = library.section("__data").address;
  EXPECT_EQ(library.word(at + 4), 0u);
  EXPECT_TRUE(library.rebases().empty());
}

TEST(DeviceLinker, DifferencesInData) {
  const ReadBack library(
      linked(assemble(kText + function("_start") + function("_inner", "bx lr", "@") +
                      dataSection(".long _inner - _data\n.long _start - .\n.long _last - _data\n"
                                  ".long _data - _inner\n_last: .long 0\n")),
             options({"_start", "_data"})));
  auto exports = library.exports();
  const uint32_t start = exports["_start"], at = exports["_data"];
  EXPECT_EQ(library.word(at), start + 2 - at);
  EXPECT_EQ(library.word(at + 4), start - (at + 4));
  EXPECT_EQ(library.word(at + 8), 16u);
  EXPECT_EQ(library.word(at + 12), at - (start - 1 + 2));
  EXPECT_TRUE(library.rebases().empty());
}

// As in a table of exception handlers, whose types are reached through pointers.
TEST(DeviceLinker, DifferencesInConstantData) {
  const ReadBack library(linked(assemble(kText + function("_start") + dataSection(".long 0") +
                                         ".section __TEXT,__gcc_except_tab\n.p2align 2\n"
                                         "_table: .long _data - .\n.long _start - _table\n"),
                                options({"_start", "_data"})));
  auto exports = library.exports();
  const uint32_t at = library.section("__gcc_except_tab").address;
  EXPECT_EQ(at + library.word(at), exports["_data"]);
  EXPECT_EQ(at + library.word(at + 4), exports["_start"]);
  EXPECT_TRUE(library.rebases().empty());
}

// Protocols are in such sections, so that linkers keep one of each.
TEST(DeviceLinker, CoalescedSectionsBecomePlainOnes) {
  const ReadBack library(
      linked(assemble(kText + function("_start") + dataSection(".long 0") +
                      ".section __DATA,__objc_protolist,coalesced,no_dead_strip\n.p2align 2\n"
                      ".weak_definition l_label\nl_label: .long _data\n"),
             options({"_start", "_data"})));
  const uint32_t at = library.section("__objc_protolist").address;
  EXPECT_EQ(library.word(at), library.exports()["_data"]);
  EXPECT_THAT(library.rebases(), ElementsAre(at));
  EXPECT_THAT(library.objdump("--macho --private-headers"), Not(HasSubstr("S_COALESCED")));
}

TEST(DeviceLinker, PointersOfTheCompilers) {
  const ReadBack library(
      linked(assemble(kText + function("_start") + function("_inner", "bx lr", "@") +
                      dataSection(".long 0") +
                      ".section __DATA,__nl_symbol_ptr,non_lazy_symbol_pointers\n.p2align 2\n"
                      ".indirect_symbol _other\n.long 0\n.indirect_symbol _inner\n.long _inner\n"),
             options({"_start"})));
  const uint32_t at = library.section("__nl_symbol_ptr").address;
  EXPECT_THAT(library.binds(), ElementsAre("__nl_symbol_ptr+0 second _other"));
  EXPECT_THAT(library.rebases(), ElementsAre(at + 4));
  EXPECT_EQ(library.word(at + 4), library.exports()["_start"] + 2);
  const std::string indirect = library.objdump("--macho --indirect-symbols");
  EXPECT_THAT(indirect, HasSubstr("_other"));
  EXPECT_THAT(indirect, HasSubstr("LOCAL"));
}

TEST(DeviceLinker, ExportsAreTheListed) {
  const ReadBack library(
      linked(assemble(kText + function("_a") + function("_ab") + function("_abc") + function("_b") +
                      function("_not_listed") + dataSection(".long 0")),
             options({"_abc", "_a", "_data", "_ab"})));
  const auto exports = library.exports();
  const uint32_t text = library.section("__text").address;
  EXPECT_EQ(exports,
            (std::map<std::string, uint32_t>{{"_a", text + 1},
                                             {"_ab", text + 3},
                                             {"_abc", text + 5},
                                             {"_data", library.section("__data").address}}));
  const std::string symbols = library.nm("-m");
  EXPECT_THAT(symbols, HasSubstr("(__TEXT,__text) external [Thumb] _abc"));
  EXPECT_THAT(symbols, testing::Not(HasSubstr("_not_listed")));
}

TEST(DeviceLinker, ExportsByTheHundred) {
  // Long enough that offsets within the tree take one, two and three bytes.
  std::string text = kText;
  std::vector<std::string> names;
  for (int i = 0; i < 900; ++i) {
    names.push_back("_" + std::string(static_cast<size_t>(i % 37), 'x') + std::to_string(i * 7919));
    text += function(names.back());
  }
  const ReadBack library(linked(assemble(text), options(names)));
  const auto exports = library.exports();
  ASSERT_EQ(exports.size(), names.size());
  const uint32_t start = library.section("__text").address;
  for (uint32_t i = 0; i < names.size(); ++i) EXPECT_EQ(exports.at(names[i]), start + 2 * i + 1);
}

TEST(DeviceLinker, LoadCommandsSayWhatWasAsked) {
  const ReadBack library(
      linked(assemble(kText + function("_start") +
                      ".section __DATA,__mod_init_func,mod_init_funcs\n.p2align 2\n.long _start\n"),
             options({"_start"})));
  const std::string headers = library.objdump("--macho --private-headers");
  EXPECT_THAT(headers, HasSubstr("LC_VERSION_MIN_IPHONEOS\n  cmdsize 16\n  version 9.3\n"));
  EXPECT_THAT(headers, HasSubstr("LC_DYLD_INFO_ONLY"));
  EXPECT_THAT(headers, HasSubstr("type S_MOD_INIT_FUNC_POINTERS"));
  EXPECT_THAT(headers, HasSubstr("NOUNDEFS DYLDLINK TWOLEVEL"));
  EXPECT_THAT(library.objdump("--macho --dylib-id"), HasSubstr("/Library/it.dylib"));
  const std::string libraries = library.objdump("--macho --dylibs-used");
  EXPECT_THAT(libraries, HasSubstr("/Library/it.dylib (compatibility version 1.0.0, current "
                                   "version 2.3.4)"));
  // A library from which nothing is imported is still loaded.
  EXPECT_THAT(libraries, HasSubstr("/usr/lib/first.dylib"));
  EXPECT_THAT(libraries, HasSubstr("/usr/lib/second.dylib"));
  EXPECT_EQ(library.word(library.section("__mod_init_func").address), library.exports()["_start"]);
}

TEST(DeviceLinker, LibrariesThatAreNotUsedMayBeLeftOut) {
  device::LinkOptions with = options({"_start"});
  with.libraries.insert(with.libraries.begin(), stubLibrary("unused", {"_unused"}));
  const Bytes object = assemble(kText + function("_start", "bl _other\n"));
  const auto loadedBy = [&object](const device::LinkOptions& how) {
    std::vector<std::string> names;
    for (const auto& match : findAll(ReadBack(linked(object, how)).objdump("--macho --dylibs-used"),
                                     "\n\\s+(\\S+) \\("))
      names.push_back(match[1]);
    // The library's own name is the first.
    names.erase(names.begin());
    return names;
  };
  EXPECT_THAT(loadedBy(with),
              ElementsAre(HasSubstr("unused"), HasSubstr("first"), HasSubstr("second")));
  with.dropsUnusedLibraries = true;
  EXPECT_THAT(loadedBy(with), ElementsAre(HasSubstr("second")));
  EXPECT_THAT(ReadBack(linked(object, with)).binds(), ElementsAre("__got+0 second _other"));
  // Nothing is loaded without this one.
  with.libraries.push_back(stubLibrary("libSystem.B", {"_unused"}));
  EXPECT_THAT(loadedBy(with), ElementsAre(HasSubstr("second"), HasSubstr("libSystem.B")));
}

TEST(DeviceLinker, ABundleIsALibraryWithoutAName) {
  const Bytes object = assemble(kText + function("_start", "bl _called") +
                                dataSection(".long _imported\n.long _data"));
  device::LinkOptions with = options({"_start"});
  const ReadBack library(linked(object, with));
  with.isBundle = true;
  with.installName.clear();
  const ReadBack bundle(linked(object, with));
  const std::string headers = bundle.objdump("--macho --private-headers");
  EXPECT_THAT(headers, HasSubstr(" BUNDLE "));
  EXPECT_THAT(headers, HasSubstr("NOUNDEFS DYLDLINK TWOLEVEL\n"));
  EXPECT_THAT(headers, testing::Not(HasSubstr("LC_ID_DYLIB")));
  EXPECT_THAT(headers, HasSubstr("LC_VERSION_MIN_IPHONEOS\n  cmdsize 16\n  version 9.3\n"));
  EXPECT_THAT(bundle.objdump("--macho --dylibs-used"), HasSubstr("/usr/lib/second.dylib"));
  EXPECT_THAT(bundle.binds(), ElementsAre("__got+0 first _called", "__data+0 first _imported"));
  EXPECT_EQ(bundle.rebases(), library.rebases());
  EXPECT_EQ(bundle.exports().size(), 1u);
}

TEST(DeviceLinker, SectionsKeepTheirAlignmentAndZerosComeLast) {
  const ReadBack library(linked(
      assemble(kText + function("_start", "nop") +
               ".section __TEXT,__const\n.p2align 6\n.long 1\n"
               ".zerofill __DATA,__bss,_zeros,100000,8\n" +
               dataSection(".long _zeros") + ".section __DATA,__const\n.p2align 4\n.long 2\n"),
      options({"_start"})));
  EXPECT_EQ(library.section("__const").address % 64, 0u);
  const auto zeros = library.section("__bss");
  EXPECT_EQ(zeros.address % 256, 0u);
  EXPECT_GT(zeros.address, library.section("__data").address);
  EXPECT_EQ(zeros.size, 100000u);
  EXPECT_THAT(library.objdump("--macho --private-headers"), HasSubstr("type S_ZEROFILL"));
}

TEST(DeviceLinker, DataAmongCodeStaysMarked) {
  const ReadBack library(linked(assemble(kText + function("_start", R"(
      tbb [pc, r0]
      .data_region jt8
      .byte 2, 3
      .end_data_region
      nop
      bx lr
    )")),
                                options({"_start"})));
  const uint32_t start = library.exports()["_start"] - 1;
  char line[64];
  std::snprintf(line, sizeof line, "0x%08x      2 JUMP_TABLE8", start + 4);
  EXPECT_THAT(library.objdump("--macho --data-in-code"), HasSubstr(line));
}

TEST(DeviceLinker, TheSameInputGivesTheSameBytes) {
  const Bytes object =
      assemble(kText + function("_start", "bl _called") + dataSection(".long _start"));
  const Bytes once = linked(object, options({"_start"}));
  EXPECT_EQ(once, linked(object, options({"_start"})));
  const Bytes other = linked(object, options({"_start", "_data"}));
  const auto uuid = [](const Bytes& bytes) {
    return findAll(ReadBack(bytes).objdump("--macho --private-headers"), "uuid (\\S+)")[0][1];
  };
  EXPECT_NE(uuid(once), uuid(other));
}

TEST(DeviceLinker, BranchesReachSixteenMegabytes) {
  for (const uint32_t target : {0x1000004u, 0x4u, 0x2000002u, 0xfffffeu, 0x1234566u}) {
    Bytes instruction{0x00, 0xf0, 0x00, 0xf8};
    varnix::device::writeBranch(instruction, 0x1000000, target);
    EXPECT_EQ(varnix::device::readBranch(instruction, 0x1000000), target);
  }
  Bytes instruction{0x00, 0xf0, 0x00, 0xf8};
  EXPECT_ANY_THROW(varnix::device::writeBranch(instruction, 0x1000000, 0x2000004));
  EXPECT_ANY_THROW(varnix::device::writeBranch(instruction, 0x2000000, 0x1000002));
}

}  // namespace
