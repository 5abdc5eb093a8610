// Libraries, signed: what comes out must hold its own signature, and be the same when it is signed
// again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "macho/error.h"
#include "signer/sign.h"

using namespace varnix::device;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::span<const uint8_t> file(data, size);
  // A signature that is there already.
  try {
    verify(file, "it");
  } catch (const Error&) {
  }
  std::vector<uint8_t> library;
  try {
    library = sign(file, "it");
  } catch (const Error&) {
    return 0;
  }
  // Outside of it: an error here ends the fuzzer.
  verify(library, "it");
  if (sign(library, "it") != library) std::abort();
  return 0;
}
