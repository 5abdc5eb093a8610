// Files with slices for several processors.
#pragma once

#include <cstdint>

#include "macho/bytes.h"

namespace varnix::device {

struct UniversalSlice {
  uint32_t cpu = 0, subtype = 0;
  uint64_t offset = 0, size = 0;
};

bool isUniversal(Reader file);
/// The number of slices according to its header.
uint32_t sliceCount(Reader file);
/// What its header says about one. Throws Error if the file ends before.
UniversalSlice universalSlice(Reader file, uint32_t index);

}  // namespace varnix::device
