// The numbers of Mach-O files that only a loader needs; the rest is in macho/format.h.
#pragma once

#include <cstdint>

namespace varnix::device::macho {

/// A universal file's header is written most significant byte first.
inline constexpr uint32_t kUniversalMagic = 0xcafebabe;

enum LoaderCommand : uint32_t {
  kDyldInfo = 0x22,
  kReexportDylib = 0x8000001f,
  kChainedFixups = 0x80000034,
};

/// The fixed sizes of 64-bit structures.
inline constexpr uint32_t kSegmentSize64 = 72, kSectionSize64 = 80;

inline constexpr uint8_t kOpcodeMask = 0xf0, kImmediateMask = 0x0f;

enum RebaseOpcode : uint8_t {
  kRebaseDone = 0x00,
  kRebaseAddAddressUleb = 0x30,
  kRebaseAddAddressImmScaled = 0x40,
  kRebaseDoAddAddressUleb = 0x70,
  kRebaseDoUlebTimesSkippingUleb = 0x80,
};

enum BindOpcode : uint8_t {
  kBindDone = 0x00,
  kBindSetDylibSpecialImm = 0x30,
  kBindAddAddressUleb = 0x80,
  kBindDoAddAddressUleb = 0xa0,
  kBindDoAddAddressImmScaled = 0xb0,
  kBindDoUlebTimesSkippingUleb = 0xc0,
};

/// What a fixed word holds: an address, or the distance from the word's end to it.
inline constexpr uint8_t kAbsolute32 = 2, kRelative32 = 3;
/// Of a weak bind: this image's definition is not to be replaced.
inline constexpr uint8_t kNonWeakDefinition = 8;

/// Where a bind looks that names no library: the image itself, the executable, everywhere.
inline constexpr int kSelf = 0, kMainExecutable = -1, kFlatLookup = -2, kWeakLookup = -3;

inline constexpr uint64_t kExportKindMask = 3, kExportAbsolute = 2, kExportReexport = 8,
                          kExportStubAndResolver = 16;

}  // namespace varnix::device::macho
