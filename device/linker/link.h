// From one object and the libraries that it uses to a dynamic library or a bundle for armv7.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "linker/object.h"
#include "linker/stub_library.h"

namespace varnix::device {

struct LinkOptions {
  /// A bundle has no name and no version: nothing is linked against it.
  bool isBundle = false;
  std::string installName;
  uint32_t currentVersion = 0x10000;
  std::vector<std::string> exports;    ///< With the leading underscore.
  std::vector<StubLibrary> libraries;  ///< In load order.
  bool dropsUnusedLibraries = false;   ///< Else all are loaded.
};

/// The file's bytes, unsigned, with room for a signature's load command. The same input gives the
/// same bytes. Throws Error with the reason if it cannot be linked.
std::vector<uint8_t> link(const Object& object, const LinkOptions& options);

}  // namespace varnix::device
