// Text stubs are read, or refused with a reason.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "linker/stub_library.h"
#include "macho/error.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  try {
    const auto stub = varnix::device::readStubLibrary({data, data + size});
    if (stub.installName.empty()) std::abort();
  } catch (const varnix::device::Error&) {
  }
  return 0;
}
