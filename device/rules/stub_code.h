// Reads the code that linkers write: stubs of called functions and helpers of lazy pointers.
#pragma once

#include <cstdint>
#include <optional>

#include "rules/image.h"

namespace varnix::device {

/// What the code before all helpers loads.
struct CommonHelper {
  uint64_t cache = 0;   ///< Where the binder keeps a word.
  uint64_t binder = 0;  ///< The pointer to the binder.
};
/// Nothing for any other code.
std::optional<CommonHelper> readCommonHelper(const Image& image);

struct Helper {
  uint64_t target = 0;  ///< Where it continues.
  uint32_t stream = 0;  ///< Where the opcodes of its bind begin.
};
std::optional<Helper> readHelper(const Image& image, uint64_t address);

/// The pointer that a stub jumps through, on either processor. Nothing if it is not a stub.
std::optional<uint64_t> readStub(const Image& image, uint64_t address);

}  // namespace varnix::device
