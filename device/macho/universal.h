// Files with a slice for each of several processors.
#pragma once

#include <cstdint>

#include "macho/bytes.h"

namespace varnix::device {

struct UniversalSlice {
  uint32_t cpu = 0, subtype = 0;
  uint64_t offset = 0, size = 0;
};

bool isUniversal(Reader file);
/// How many slices it says that it has.
uint32_t sliceCount(Reader file);
/// What its header says of one. Throws Error where the file ends before.
UniversalSlice universalSlice(Reader file, uint32_t index);

}  // namespace varnix::device
