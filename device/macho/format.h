// The numbers of Mach-O files that the linker and the signer use, under the platform's names.
#pragma once

#include <cstdint>

namespace varnix::device::macho {

inline constexpr uint32_t kMagic32 = 0xfeedface, kMagic64 = 0xfeedfacf;
inline constexpr uint32_t kHeaderSize32 = 28, kHeaderSize64 = 32;
inline constexpr uint32_t kCpuArm = 12, kCpuArm64 = 0x0100000c;
inline constexpr uint32_t kSubtypeArmV7 = 9;

enum FileType : uint32_t { kObject = 1, kDylib = 6, kBundle = 8 };

enum HeaderFlag : uint32_t {
  kNoUndefs = 0x1,
  kDyldLink = 0x4,
  kTwoLevel = 0x80,
  kNoReexportedDylibs = 0x100000,
};

enum Command : uint32_t {
  kSegment = 0x1,
  kSymtab = 0x2,
  kDysymtab = 0xb,
  kLoadDylib = 0xc,
  kIdDylib = 0xd,
  kLoadWeakDylib = 0x80000018,
  kSegment64 = 0x19,
  kUuid = 0x1b,
  kCodeSignature = 0x1d,
  kVersionMinIphoneos = 0x25,
  kDataInCode = 0x29,
  kLinkerOption = 0x2d,
  kDyldInfoOnly = 0x80000022,
};

/// The fixed sizes of 32-bit structures.
enum Size : uint32_t {
  kSegmentSize = 56,
  kSectionSize = 68,
  kSymtabSize = 24,
  kDysymtabSize = 80,
  kDylibSize = 24,
  kUuidSize = 24,
  kDyldInfoSize = 48,
  kVersionMinSize = 16,
  kLinkeditDataSize = 16,
  kNlistSize = 12,
  kRelocationSize = 8,
  kDataInCodeSize = 8,
};

enum SectionType : uint32_t {
  kRegular = 0,
  kZeroFill = 1,
  kCstringLiterals = 2,
  k4ByteLiterals = 3,
  k8ByteLiterals = 4,
  kLiteralPointers = 5,
  kNonLazySymbolPointers = 6,
  kSymbolStubs = 8,
  kModInitFuncPointers = 9,
  k16ByteLiterals = 14,
};
inline constexpr uint32_t kSectionTypeMask = 0xff;
inline constexpr uint32_t kPureInstructions = 0x80000000, kSomeInstructions = 0x400;

enum Protection : uint32_t { kRead = 1, kWrite = 2, kExecute = 4 };

/// Of a symbol's type byte.
inline constexpr uint8_t kStabMask = 0xe0, kPrivateExternal = 0x10, kTypeMask = 0x0e, kExternal = 1;
enum SymbolType : uint8_t { kUndefined = 0, kAbsolute = 2, kInSection = 0xe };
/// Of a symbol's description.
inline constexpr uint16_t kArmThumb = 0x8, kWeakReference = 0x40, kWeakDefinition = 0x80;

/// Entries of the table of indirect symbols that name no symbol.
inline constexpr uint32_t kIndirectLocal = 0x80000000, kIndirectAbsolute = 0x40000000;

enum ArmRelocation : uint8_t {
  kVanilla = 0,
  kPair = 1,
  kSectionDifference = 2,
  kLocalSectionDifference = 3,
  kPrebound = 4,
  kBranch24 = 5,
  kThumbBranch22 = 6,
  kThumb32Branch = 7,
  kHalf = 8,
  kHalfSectionDifference = 9,
};

/// The loader's opcodes for rebasing and binding; an immediate stands in the low four bits.
enum Opcode : uint8_t {
  kRebaseSetTypeImm = 0x10,
  kRebaseSetSegmentAndOffsetUleb = 0x20,
  kRebaseDoImmTimes = 0x50,
  kRebaseDoUlebTimes = 0x60,
  kBindSetDylibOrdinalImm = 0x10,
  kBindSetDylibOrdinalUleb = 0x20,
  kBindSetSymbolTrailingFlagsImm = 0x40,
  kBindSetTypeImm = 0x50,
  kBindSetAddendSleb = 0x60,
  kBindSetSegmentAndOffsetUleb = 0x70,
  kBindDo = 0x90,
};
inline constexpr uint8_t kPointer = 1, kWeakImport = 1;

}  // namespace varnix::device::macho
