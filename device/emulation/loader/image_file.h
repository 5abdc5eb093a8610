// A dynamic library's file as its load commands tell it.
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

/// Addresses are the file's own; bytes behind those of the file are zeros.
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

/// Views into the file's bytes, which have to stay.
struct ImageFile {
  Architecture architecture = Architecture::arm64;
  Reader bytes;
  std::string_view installName;
  uint32_t version = 0;  ///< Its own compatibility version.
  /// In the file's order, which opcodes count by. Within the image, apart from each other.
  std::vector<ImageSegment> segments;
  /// Each lies in one segment.
  std::vector<ImageSection> sections;
  /// The first is number 1 to the binds.
  std::vector<ImageLibrary> libraries;
  Reader rebases, binds, weakBinds, lazyBinds, exports;
  uint64_t base = 0;  ///< The lowest address.
  uint64_t size = 0;  ///< From there to the end of the highest segment.

  uint64_t pointerSize() const { return architecture == Architecture::arm64 ? 8 : 4; }
  /// Nil where there is none.
  const ImageSection* section(std::string_view name) const;
};

/// The slice for `architecture` of a universal file, or the whole of one that is no universal file.
/// Throws Error where there is none.
Reader sliceFor(Architecture architecture, Reader file);

/// Throws Error where the file is no dynamic library for `architecture`, contradicts itself, is
/// larger than 64 MiB in memory, or has chained fixups.
ImageFile readImageFile(Architecture architecture, Reader slice);

}  // namespace varnix::device
