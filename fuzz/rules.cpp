// Libraries are checked against the platform's rules: each must get findings, never an exception.
#include <cstddef>
#include <cstdint>

#include "rules/check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  varnix::device::checkLibrary({data, size});
  return 0;
}
