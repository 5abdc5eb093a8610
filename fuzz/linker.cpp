// Objects for armv7 are linked: the result must be a library that can be signed.
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
  std::vector<uint8_t> library;
  try {
    library = link(readObject(Reader({data, size})), options);
  } catch (const Error&) {
    return 0;
  }
  // Outside the try block: an error here ends the fuzzer.
  verify(sign(library, "it"), "it");
  return 0;
}
