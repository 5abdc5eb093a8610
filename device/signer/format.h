// The numbers of embedded signatures. Their fields are stored most significant byte first.
#pragma once

#include <cstdint>

namespace varnix::device::signature {

enum Magic : uint32_t {
  kRequirements = 0xfade0c01,
  kCodeDirectory = 0xfade0c02,
  kCms = 0xfade0b01,
  kSuperBlob = 0xfade0cc0,
};

enum Slot : uint32_t {
  kCodeDirectorySlot = 0,
  kRequirementsSlot = 2,
  kAlternateCodeDirectorySlot = 0x1000,
  kCmsSlot = 0x10000,
};

inline constexpr uint32_t kVersion = 0x20400;
inline constexpr uint32_t kAdHoc = 0x2;
inline constexpr uint32_t kCodeDirectorySize = 88;
/// Code is hashed in pieces of this size, whatever the processor's pages are.
inline constexpr uint32_t kPageBits = 12, kPageBytes = 1 << kPageBits;

/// Hashes before those of the code: the requirements', and that of a property list, which a library
/// does not have.
inline constexpr uint32_t kSpecialSlots = 2;

}  // namespace varnix::device::signature
