// The numbers of Mach-O files that only rules need; the rest is in macho/format.h and
// macho/loading.h.
#pragma once

#include <cstdint>

namespace varnix::device::macho {

/// The size of a page for the loader, on 64-bit processors; a multiple of that of 32-bit ones.
inline constexpr uint64_t kPage = 0x4000;
/// What the loader reads of a file before it looks at it.
inline constexpr uint64_t kFirstRead = 0x1000;

enum RareHeaderFlag : uint32_t {
  kHasPreboundAddresses = 0x10,
  kSplitSegments = 0x20,
  kForceFlat = 0x100,
  kWeakDefines = 0x8000,
  kBindsToWeak = 0x10000,
};

/// Of a load command that a loader has to know or else refuse the file.
inline constexpr uint32_t kRequired = 0x80000000;

enum RareCommand : uint32_t {
  kRoutines = 0x11,
  kRoutines64 = 0x1a,
  kSegmentSplitInfo = 0x1e,
  kEncryptionInfo = 0x21,
  kFunctionStarts = 0x26,
  kDylibCodeSigningDirectives = 0x2b,
  kEncryptionInfo64 = 0x2c,
  kOptimizationHint = 0x2e,
  kRunPath = 0x8000001c,
  kLoadUpwardDylib = 0x80000023,
  kMain = 0x80000028,
};

enum RareSectionType : uint8_t {
  kLazySymbolPointers = 7,
  kModTermFuncPointers = 10,
  kGigabyteZeroFill = 12,
  kThreadLocalZeroFill = 18,
};
/// Of a section that has relocations.
inline constexpr uint32_t kExternalRelocations = 0x200, kLocalRelocations = 0x100;

inline constexpr uint32_t kNlistSize64 = 16;

}  // namespace varnix::device::macho
