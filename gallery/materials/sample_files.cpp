#include "gallery/materials/sample_files.h"

#include <filesystem>

#include "common/errors.h"
#include "process/process.h"

namespace varnix::cli {

namespace {

/// Beside the installed files, else in the sources of this build.
std::filesystem::path samples() {
  const auto installed = host::ownFolder() / "samples";
  std::error_code ignored;
  return std::filesystem::is_directory(installed, ignored) ? installed : VARNIX_SAMPLE_FILES;
}

}  // namespace

std::string sampleFile(const std::string& name) {
  const auto file = samples() / name;
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored))
    throw Failure("a sample is missing", file.string());
  return file.string();
}

}  // namespace varnix::cli
