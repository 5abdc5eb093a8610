// The numbers of Mach-O files, under the platform's names: what linker, signer, checks and loader
// use.
#pragma once

#include <cstdint>

namespace varnix::device::macho {

inline constexpr uint32_t kMagic32 = 0xfeedface, kMagic64 = 0xfeedfacf;
/// A universal file's header is written most significant byte first.
inline constexpr uint32_t kUniversalMagic = 0xcafebabe;
inline constexpr uint32_t kHeaderSize32 = 28, kHeaderSize64 = 32;
inline constexpr uint32_t kCpuArm = 12, kCpuArm64 = 0x0100000c;
inline constexpr uint32_t kSubtypeArmV7 = 9;

/// The size of a page for the loader, on 64-bit processors; a multiple of that of 32-bit ones.
inline constexpr uint64_t kPage = 0x4000;
/// The part of a file that the loader reads first.
inline constexpr uint64_t kFirstRead = 0x1000;

enum FileType : uint32_t { kObject = 1, kDylib = 6, kBundle = 8 };

enum HeaderFlag : uint32_t {
  kNoUndefs = 0x1,
  kDyldLink = 0x4,
  kHasPreboundAddresses = 0x10,
  kSplitSegments = 0x20,
  kTwoLevel = 0x80,
  kForceFlat = 0x100,
  kWeakDefines = 0x8000,
  kBindsToWeak = 0x10000,
  kNoReexportedDylibs = 0x100000,
};

/// In a load command that a loader must know, or else refuse the file.
inline constexpr uint32_t kRequired = 0x80000000;

enum Command : uint32_t {
  kSegment = 0x1,
  kSymtab = 0x2,
  kDysymtab = 0xb,
  kLoadDylib = 0xc,
  kIdDylib = 0xd,
  kRoutines = 0x11,
  kLoadWeakDylib = 0x18 | kRequired,
  kSegment64 = 0x19,
  kRoutines64 = 0x1a,
  kUuid = 0x1b,
  kRunPath = 0x1c | kRequired,
  kCodeSignature = 0x1d,
  kSegmentSplitInfo = 0x1e,
  kReexportDylib = 0x1f | kRequired,
  kEncryptionInfo = 0x21,
  kDyldInfo = 0x22,
  kDyldInfoOnly = 0x22 | kRequired,
  kLoadUpwardDylib = 0x23 | kRequired,
  kVersionMinIphoneos = 0x25,
  kFunctionStarts = 0x26,
  kMain = 0x28 | kRequired,
  kDataInCode = 0x29,
  kDylibCodeSigningDirectives = 0x2b,
  kEncryptionInfo64 = 0x2c,
  kLinkerOption = 0x2d,
  kOptimizationHint = 0x2e,
  kChainedFixups = 0x34 | kRequired,
};

/// The fixed sizes of structures; for 32 bits where the two differ.
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
  kSegmentSize64 = 72,
  kSectionSize64 = 80,
  kNlistSize64 = 16,
};

enum SectionType : uint32_t {
  kRegular = 0,
  kZeroFill = 1,
  kCstringLiterals = 2,
  k4ByteLiterals = 3,
  k8ByteLiterals = 4,
  kLiteralPointers = 5,
  kNonLazySymbolPointers = 6,
  kLazySymbolPointers = 7,
  kSymbolStubs = 8,
  kModInitFuncPointers = 9,
  kModTermFuncPointers = 10,
  kCoalesced = 11,
  kGigabyteZeroFill = 12,
  k16ByteLiterals = 14,
  kThreadLocalZeroFill = 18,
};
inline constexpr uint32_t kSectionTypeMask = 0xff;
inline constexpr uint32_t kPureInstructions = 0x80000000, kSomeInstructions = 0x400;
/// Of a section that has relocations.
inline constexpr uint32_t kExternalRelocations = 0x200, kLocalRelocations = 0x100;

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

/// The loader's opcodes for rebasing and binding: the opcode in the high four bits, an immediate in
/// the low four.
inline constexpr uint8_t kOpcodeMask = 0xf0, kImmediateMask = 0x0f;

enum RebaseOpcode : uint8_t {
  kRebaseDone = 0x00,
  kRebaseSetTypeImm = 0x10,
  kRebaseSetSegmentAndOffsetUleb = 0x20,
  kRebaseAddAddressUleb = 0x30,
  kRebaseAddAddressImmScaled = 0x40,
  kRebaseDoImmTimes = 0x50,
  kRebaseDoUlebTimes = 0x60,
  kRebaseDoAddAddressUleb = 0x70,
  kRebaseDoUlebTimesSkippingUleb = 0x80,
};

enum BindOpcode : uint8_t {
  kBindDone = 0x00,
  kBindSetDylibOrdinalImm = 0x10,
  kBindSetDylibOrdinalUleb = 0x20,
  kBindSetDylibSpecialImm = 0x30,
  kBindSetSymbolTrailingFlagsImm = 0x40,
  kBindSetTypeImm = 0x50,
  kBindSetAddendSleb = 0x60,
  kBindSetSegmentAndOffsetUleb = 0x70,
  kBindAddAddressUleb = 0x80,
  kBindDo = 0x90,
  kBindDoAddAddressUleb = 0xa0,
  kBindDoAddAddressImmScaled = 0xb0,
  kBindDoUlebTimesSkippingUleb = 0xc0,
};

/// The value of a fixed-up word: an address, an absolute one, or the distance from the word's end
/// to it.
inline constexpr uint8_t kPointer = 1, kAbsolute32 = 2, kRelative32 = 3;
/// Flags of a bind. With the latter, another image's definition does not replace a weak one.
inline constexpr uint8_t kWeakImport = 1, kNonWeakDefinition = 8;

/// Where a bind without a library looks: the image itself, the executable, everywhere.
inline constexpr int kSelf = 0, kMainExecutable = -1, kFlatLookup = -2, kWeakLookup = -3;

inline constexpr uint64_t kExportKindMask = 3, kExportAbsolute = 2, kExportReexport = 8,
                          kExportStubAndResolver = 16;

}  // namespace varnix::device::macho
