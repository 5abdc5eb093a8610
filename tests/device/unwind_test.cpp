// How the frames of a library's functions are read, and passed to this system's unwinder.
#include <gmock/gmock.h>

#include <random>

#include "device/loadable.h"
#include "loader/unwind_info.h"
#include "macho/error.h"

namespace {

using namespace device_test;
using device::Architecture;
using device::CodeFrame;
using device::ImageFile;
using device::Reader;
using testing::ElementsAre;
using testing::HasSubstr;

/// Three functions: one that saves nothing, one that saves two pairs, one without a frame.
constexpr const char* kFrames = R"(
  .section __TEXT,__text,regular,pure_instructions
  .globl _first
  .p2align 2
_first:
  .cfi_startproc
  stp x29, x30, [sp, #-16]!
  mov x29, sp
  .cfi_def_cfa w29, 16
  .cfi_offset w30, -8
  .cfi_offset w29, -16
  bl _imported
  ldp x29, x30, [sp], #16
  ret
  .cfi_endproc
_second:
  .cfi_startproc
  stp d9, d8, [sp, #-48]!
  stp x22, x21, [sp, #16]
  stp x29, x30, [sp, #32]
  add x29, sp, #32
  .cfi_def_cfa w29, 16
  .cfi_offset w30, -8
  .cfi_offset w29, -16
  .cfi_offset w21, -24
  .cfi_offset w22, -32
  .cfi_offset b8, -40
  .cfi_offset b9, -48
  bl _imported
  ldp x29, x30, [sp, #32]
  ldp x22, x21, [sp, #16]
  ldp d9, d8, [sp], #48
  ret
  .cfi_endproc
_leaf:
  .cfi_startproc
  ret
  .cfi_endproc
.subsections_via_symbols
)";

std::vector<CodeFrame> framesOf(const Bytes& library) {
  return device::readUnwindInfo(device::readImageFile(Architecture::arm64, Reader(library)));
}

TEST(Unwinding, LinkedFramesAreFound) {
  const auto frames = framesOf(loadable(kFrames));
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_EQ(frames[0].size, 20u);
  EXPECT_THAT(frames[0].saved, ElementsAre());
  EXPECT_EQ(frames[1].start, frames[0].start + frames[0].size);
  EXPECT_EQ(frames[1].size, 36u);
  EXPECT_THAT(frames[1].saved, ElementsAre(21, 22, 72, 73));
}

/// A function that looks at exceptions, one with a routine but no handlers, one without either.
constexpr const char* kHandlers = R"(
  .macro FRAME name
\name:
  .cfi_startproc
  stp x29, x30, [sp, #-16]!
  mov x29, sp
  .cfi_def_cfa w29, 16
  .cfi_offset w30, -8
  .cfi_offset w29, -16
  .endm
  .macro END
  ldp x29, x30, [sp], #16
  ret
  .cfi_endproc
  .endm
  .section __TEXT,__text,regular,pure_instructions
  .globl _first
  .p2align 2
  FRAME _first
  .cfi_personality 155, ___objc_personality_v0
  .cfi_lsda 16, _handlers
  bl _called
  END
  FRAME _second
  .cfi_personality 155, ___objc_personality_v0
  END
  FRAME _third
  END
  .section __TEXT,__gcc_except_tab
  .p2align 2
  .long 0
_handlers:
  .byte 0xff, 0x9b, 0x01, 0x00
.subsections_via_symbols
)";

TEST(Unwinding, HandlersAreFound) {
  const Bytes library = loadable(kHandlers);
  const ImageFile image = device::readImageFile(Architecture::arm64, Reader(library));
  const auto frames = device::readUnwindInfo(image);
  ASSERT_EQ(frames.size(), 3u);
  EXPECT_EQ(frames[0].handlers, image.section("__gcc_except_tab")->address - image.base + 4);
  const uint64_t pointers = image.section("__got")->address - image.base;
  EXPECT_GE(frames[0].personality, pointers);
  EXPECT_LT(frames[0].personality, pointers + image.section("__got")->size);
  EXPECT_EQ(frames[1].personality, frames[0].personality);
  EXPECT_EQ(frames[1].handlers, 0u);
  EXPECT_EQ(frames[2].personality, 0u);
}

TEST(Unwinding, AnImageWithoutAnyHasNone) { EXPECT_TRUE(framesOf(loadable()).empty()); }

/// The library with words of its section changed, by their offsets in it.
Bytes changed(uint64_t offset, uint32_t value) {
  Bytes library = loadable(kFrames);
  const ImageFile image = device::readImageFile(Architecture::arm64, Reader(library));
  const auto* section = image.section("__unwind_info");
  device::put32(library, section->address - image.base + offset, value);
  return library;
}

std::string refusalOf(const Bytes& library) {
  try {
    framesOf(library);
  } catch (const device::Error& error) {
    return error.what();
  }
  return {};
}

TEST(Unwinding, WhatIsNotKnownIsRefused) {
  EXPECT_EQ(refusalOf(loadable(kFrames)), "");
  EXPECT_EQ(refusalOf(changed(0, 2)), "unwind information of an unknown version");
  EXPECT_EQ(refusalOf(changed(24, 0)), "unwind information without an end");
  EXPECT_NE(refusalOf(changed(20, 0x7fffffff)), "");
  const Bytes whole = loadable(kFrames);
  const ImageFile image = device::readImageFile(Architecture::arm64, Reader(whole));
  const uint64_t at = image.section("__unwind_info")->address - image.base;
  const uint32_t page = Reader(whole).u32(at + Reader(whole).u32(at + 20) + 4);
  EXPECT_EQ(refusalOf(changed(page, 7)), "a page of unwind information of an unknown kind");
  const uint32_t encodings = Reader(whole).u32(at + 4);
  EXPECT_EQ(refusalOf(changed(encodings, 0x03000000)),
            "a function whose frame is described elsewhere");
}

TEST(Unwinding, DamagedTablesAreRefusedOrRead) {
  const Bytes whole = loadable(kHandlers);
  const ImageFile image = device::readImageFile(Architecture::arm64, Reader(whole));
  const auto* section = image.section("__unwind_info");
  std::mt19937 random(20260101);
  int refused = 0;
  constexpr int kTimes = 20000;
  for (int i = 0; i < kTimes; ++i) {
    Bytes library = whole;
    for (int times = 0; times < 3; ++times)
      library[section->address - image.base + random() % section->size] =
          static_cast<uint8_t>(random());
    refused += refusalOf(library).empty() ? 0 : 1;
  }
  EXPECT_GT(refused, kTimes / 100);
  EXPECT_LT(refused, kTimes);
}

/// Read back by llvm's own reader for such tables.
std::string dumped(const Bytes& table) {
  std::string source = ".section .eh_frame,\"a\",%progbits\n";
  for (const uint8_t byte : table) source += ".byte " + std::to_string(byte) + "\n";
  const Folder folder;
  device::writeFile(folder / "it.o", assemble(source, "aarch64-linux-gnu"));
  return printed("llvm-dwarfdump-19 --eh-frame " + (folder / "it.o"));
}

TEST(Unwinding, TheTableSaysWhereRegistersLie) {
  const CodeFrame frames[] = {{0x40, 0x20, {}}, {0x60, 0x10, {21, 22, 72, 73}}};
  const std::string text = dumped(device::frameTable(frames, 0x10000));
  EXPECT_THAT(text, HasSubstr("pc=00010040...00010060"));
  EXPECT_THAT(text, HasSubstr("pc=00010060...00010070"));
  EXPECT_THAT(text, HasSubstr("0x10040: CFA=W29+16: W29=[CFA-16], W30=[CFA-8]\n"));
  EXPECT_THAT(text, HasSubstr("0x10060: CFA=W29+16: W21=[CFA-24], W22=[CFA-32], W29=[CFA-16], "
                              "W30=[CFA-8], B8=[CFA-40], B9=[CFA-48]\n"));
}

TEST(Unwinding, TheTableSaysWhereHandlersAre) {
  const CodeFrame frames[] = {{0x40, 0x20, {}, 8, 0x100}, {0x60, 0x10, {}}, {0x70, 0x10, {}, 8, 0}};
  const Bytes table = device::frameTable(frames, 0x10000, [](uint64_t at) { return 0x5000 + at; });
  const std::string text = dumped(table);
  EXPECT_THAT(text, HasSubstr("Personality Address: 0000000000005008"));
  EXPECT_THAT(text, HasSubstr("pc=00010040...00010060\n  Format:       DWARF32\n"
                              "  LSDA Address: 0000000000010100"));
  EXPECT_EQ(findAll(text, "Augmentation: +\"zPL\"").size(), 1u);
  EXPECT_EQ(findAll(text, "Augmentation: +\"\"").size(), 1u);
  EXPECT_THAT(text, HasSubstr("pc=00010060...00010070"));
  EXPECT_THAT(text, HasSubstr("0x10070: CFA=W29+16: W29=[CFA-16], W30=[CFA-8]\n"));
}

}  // namespace
