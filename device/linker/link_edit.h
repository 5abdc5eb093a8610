// What follows the segments: the loader's instructions, symbols, and tables that point to them.
#pragma once

#include <cstdint>
#include <vector>

#include "linker/dyld_info.h"
#include "linker/imports.h"
#include "linker/layout.h"
#include "linker/object.h"

namespace varnix::device {

/// A table's place in the file.
struct Table {
  uint32_t offset = 0, size = 0;
};

struct LinkEdit {
  std::vector<uint8_t> bytes;
  Table rebase, bind, exports, dataInCode, symbols, indirect, names;
  uint32_t exportCount = 0, importCount = 0;
};

/// Also sets where the indirect symbols of the sections of pointers and stubs begin.
LinkEdit makeLinkEdit(const Object& object, const Imports& imports, const Fixups& fixups,
                      std::vector<Export> exports, Layout& layout);

}  // namespace varnix::device
