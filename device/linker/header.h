// The header and the load commands of the library.
#pragma once

#include <cstdint>
#include <vector>

#include "linker/layout.h"
#include "linker/link.h"
#include "linker/link_edit.h"

namespace varnix::device {

/// What the header takes, and the room behind it for one more load command, of a signature.
uint32_t headerSize(size_t sectionCount, const LinkOptions& options);

/// Where the header has the UUID, which is written last.
struct Header {
  std::vector<uint8_t> bytes;
  size_t uuid = 0;
};

Header makeHeader(const Layout& layout, const LinkEdit& edit, uint32_t minimumVersion,
                  const LinkOptions& options);

}  // namespace varnix::device
