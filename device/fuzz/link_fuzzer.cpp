// Feeds the linker and the signer what libFuzzer makes of real files. docs/device.md says how.
#include <cstddef>
#include <cstdint>

#include "linker/link.h"
#include "macho/error.h"
#include "signer/sign.h"

using namespace varnix::device;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const LinkOptions options{.installName = "/Library/it.dylib",
                                   .exports = {"_entry"},
                                   .libraries = {{.installName = "/usr/lib/it.dylib",
                                                  .symbols = {"_called", "_imported", "_other"}}}};
  const std::span<const uint8_t> file(data, size);
  try {
    const std::vector<uint8_t> library = sign(link(readObject(Reader(file)), options), "it");
    verify(library, "it");
  } catch (const Error&) {
  }
  try {
    const std::vector<uint8_t> library = sign(file, "it");
    verify(library, "it");
  } catch (const Error&) {
  }
  return 0;
}
