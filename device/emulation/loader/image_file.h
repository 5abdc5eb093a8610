// A dynamic library's file as its load commands describe it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "macho/bytes.h"

namespace varnix::device {

enum class Architecture : uint8_t { armv7, arm64 };

/// "armv7" or "arm64".
std::string_view nameOf(Architecture architecture);

/// Addresses are the file's own; bytes after those in the file are zeros.
struct ImageSegment {
  std::string_view name;
  uint64_t address = 0, size = 0;
  uint64_t fileOffset = 0, fileSize = 0;
  uint32_t protection = 0;  ///< macho::Protection
};

struct ImageSection {
  std::string_view segment, name;
  uint64_t address = 0, size = 0;
  uint8_t type = 0;  ///< macho::SectionType
};

struct ImageLibrary {
  std::string_view name;
  bool isWeak = false;   ///< May be missing.
  uint32_t version = 0;  ///< The compatibility version that is demanded.
  bool isMissing =
      false;  ///< What is imported from it is nil. The file does not say it: see needed.h.
};

/// Views into the file's bytes, which must stay alive.
struct ImageFile {
  Architecture architecture = Architecture::arm64;
  Reader bytes;
  std::string_view installName;
  uint32_t version = 0;  ///< Its own compatibility version.
  /// In the file's order, by which opcodes number them. Within the image, without overlaps.
  std::vector<ImageSegment> segments;
  /// Each lies in one segment.
  std::vector<ImageSection> sections;
  /// Binds number them from 1.
  std::vector<ImageLibrary> libraries;
  Reader rebases, binds, weakBinds, lazyBinds, exports;
  uint64_t base = 0;  ///< The lowest address.
  uint64_t size = 0;  ///< From there to the end of the highest segment.

  uint64_t pointerSize() const { return architecture == Architecture::arm64 ? 8 : 4; }
  /// Nil if there is none.
  const ImageSection* section(std::string_view name) const;
};

/// The slice for `architecture` of a universal file, or the whole of any other file. Throws Error
/// if there is none.
Reader sliceFor(Architecture architecture, Reader file);

/// Throws Error if the file is not a dynamic library for `architecture`, contradicts itself, is
/// larger than 64 MiB in memory, or has chained fixups.
ImageFile readImageFile(Architecture architecture, Reader slice);

}  // namespace varnix::device
