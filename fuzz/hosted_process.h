// The process that a fuzzer runs in: hosted once, in a container of its own that is removed with
// it.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "process/process.h"

namespace fuzz {

/// A folder that is removed when the process ends by exit(), as a fuzzer does. A process that a
/// finding ends leaves it in the folder for temporary files.
inline const std::string& container() {
  static const auto* root = [] {
    auto* name =
        new std::string((std::filesystem::temp_directory_path() / "varnix-fuzz-XXXXXX").string());
    if (mkdtemp(name->data()) == nullptr) std::abort();
    return name;
  }();
  return *root;
}

/// Call this once, before the first input. It sets the root.
inline void host(host::ProcessOptions options) {
  std::atexit([] {
    std::error_code ignored;
    std::filesystem::remove_all(container(), ignored);
  });
  options.root = container();
  host::startProcess(options);
}
/// An ordinary application.
inline void hostApplication() {
  host::ProcessOptions options;
  options.bundle = "com.example.app";
  host(options);
}

inline std::string_view text(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Must hold for every input; if it does not, the fuzzer keeps the input.
inline void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace fuzz
