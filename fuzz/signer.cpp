// Libraries are signed: the result must have a valid signature, and signing it again must not
// change it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "macho/error.h"
#include "signer/sign.h"

using namespace varnix::device;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::span<const uint8_t> file(data, size);
  // The input may already have a signature.
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
  // Outside the try block: an error here ends the fuzzer.
  verify(library, "it");
  if (sign(library, "it") != library) std::abort();
  return 0;
}
