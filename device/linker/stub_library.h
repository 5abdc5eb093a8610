// A text stub: the name of a library on the device, and its symbols.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace varnix::device {

struct StubLibrary {
  std::string installName;
  uint32_t currentVersion = 0x10000, compatibilityVersion = 0x10000;  ///< 1.0 is 0x00010000.
  std::set<std::string, std::less<>> symbols;
  bool isWeak =
      false;  ///< May be missing on the device; the file does not say so, the caller does.
};

/// Reads version 4 of the format, for a target, or for all if that is empty. A stub with an entry
/// that is not handled, such as a re-export, throws Error.
StubLibrary readStubLibrary(const std::string& text, std::string_view target = "armv7-ios");

}  // namespace varnix::device
