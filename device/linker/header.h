// The header and the load commands of the library.
#pragma once

#include <cstdint>
#include <vector>

#include "linker/layout.h"
#include "linker/link.h"
#include "linker/link_edit.h"

namespace varnix::device {

/// The size of the header, and the room after it for one more load command, a signature's.
uint32_t headerSize(size_t sectionCount, const LinkOptions& options);

/// The offset of the UUID in the header. It is written last.
struct Header {
  std::vector<uint8_t> bytes;
  size_t uuid = 0;
};

Header makeHeader(const Layout& layout, const LinkEdit& edit, uint32_t minimumVersion,
                  const LinkOptions& options);

}  // namespace varnix::device
