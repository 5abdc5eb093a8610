#include "macho/universal.h"

#include "macho/format.h"

namespace varnix::device {

bool isUniversal(Reader file) {
  return file.size() >= 4 && file.big32(0) == macho::kUniversalMagic;
}

uint32_t sliceCount(Reader file) { return file.big32(4); }

UniversalSlice universalSlice(Reader file, uint32_t index) {
  const uint64_t entry = 8 + uint64_t{20} * index;
  return {file.big32(entry), file.big32(entry + 4), file.big32(entry + 8), file.big32(entry + 12)};
}

}  // namespace varnix::device
