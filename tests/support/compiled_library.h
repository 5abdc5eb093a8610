// The libraries that tests/add_compiled.cmake builds.
#pragma once

#include <string>

#include "process/process.h"

namespace test {

/// The path of one, from its name with the folder below tests/. On a device's processor it is the
/// device's file.
inline std::string compiledLibrary(const std::string& name) {
#if defined(__aarch64__) || defined(__arm__)
  constexpr const char* kEnding = ".dylib";
#else
  constexpr const char* kEnding = ".so";
#endif
  return (host::ownFolder() / "tests" / name).string() + kEnding;
}

}  // namespace test
