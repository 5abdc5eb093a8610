#include "preview/sample_files.h"

#include <filesystem>

#include "errors.h"

namespace varnix::cli {

std::string sampleFile(const std::string& name) {
  const auto file = std::filesystem::path(VARNIX_SAMPLE_FILES) / name;
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored))
    throw Failure("a sample is missing", file.string());
  return file.string();
}

}  // namespace varnix::cli
