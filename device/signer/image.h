// What a signature needs to know about a library for one architecture.
#pragma once

#include <cstdint>
#include <optional>

#include "macho/bytes.h"

namespace varnix::device {

struct SignedImage {
  bool is64 = false;
  uint32_t commandCount = 0, commandSize = 0;
  uint32_t headerEnd = 0;     ///< Where the load commands end.
  uint32_t firstContent = 0;  ///< Where the first section begins.
  uint64_t textOffset = 0, textSize = 0;
  uint64_t linkEdit = 0;  ///< Where the load command of the last segment is.
  uint64_t linkEditOffset = 0, linkEditSize = 0;
  std::optional<uint64_t> command;  ///< Where the signature's load command is, if there is one.
  uint32_t signatureOffset = 0, signatureSize = 0;
};

/// Throws Error unless it is an undamaged library for one architecture, 32- or 64-bit Arm.
SignedImage readImage(Reader file);

}  // namespace varnix::device
