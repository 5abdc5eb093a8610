// Libraries are read as the emulation's loader reads them. Nothing is mapped or run.
#include <cstddef>
#include <cstdint>

#include "loader/exports.h"
#include "loader/fixups.h"
#include "loader/image_file.h"
#include "loader/unwind_info.h"
#include "macho/error.h"

using namespace varnix::device;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  for (const Architecture architecture : {Architecture::arm64, Architecture::armv7}) {
    try {
      const ImageFile image =
          readImageFile(architecture, sliceFor(architecture, Reader({data, size})));
      readRebases(image);
      readBinds(image);
      readWeakBinds(image);
      readExports(image);
      readUnwindInfo(image);
    } catch (const Error&) {
    }
  }
  return 0;
}
