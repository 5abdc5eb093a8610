// A file with slices, or with only one.
#pragma once

#include <optional>
#include <vector>

#include "macho/universal.h"

namespace varnix::device {

struct FileSlice {
  uint32_t index = 0;
  UniversalSlice entry;
  std::optional<Reader> bytes;  ///< Nothing if it leaves the file.
};

struct UniversalFile {
  Reader bytes;
  bool isUniversal = false;
  uint32_t count = 0;  ///< As it says.
  /// One if it is not universal. None if their table leaves the part that the loader reads.
  std::vector<FileSlice> slices;
};

UniversalFile readUniversalFile(Reader bytes);

/// "armv7", "arm64", or what else a processor is called.
std::string processorName(uint32_t cpu, uint32_t subtype);

inline std::string labelOf(const FileSlice& slice) {
  return processorName(slice.entry.cpu, slice.entry.subtype);
}

}  // namespace varnix::device
