#include "common/output_file.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "Foundation/property_list.h"
#include "common/errors.h"

namespace varnix::cli {

namespace fs = std::filesystem;

namespace {

/// Where a link leads, even if nothing is there yet.
fs::path followed(fs::path path) {
  constexpr int kMostLinks = 40;  // the system's own limit
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i) {
    const fs::path target = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / target;
  }
  return path;
}

}  // namespace

void writeOutput(const std::string& file, std::string_view contents) {
  std::error_code ignored;
  const auto type = fs::status(file, ignored).type();
  const bool isReplaced = type == fs::file_type::regular || type == fs::file_type::not_found;
  const std::string target = isReplaced ? followed(file).string() : file;
  if (!host::writeFile(target, contents, isReplaced)) throw Failure("cannot write", file);
}

void requireNoInput(const std::string& output, const std::vector<std::string>& inputs) {
  for (const std::string& input : inputs) {
    std::error_code error;
    if (!fs::is_regular_file(input, error)) continue;
    if (fs::equivalent(output, input, error) && !error)
      throw UsageError("what is read would be overwritten", input);
  }
}

void requireNoInputWithin(const std::string& folder, const std::vector<std::string>& inputs) {
  std::error_code error;
  const fs::path outer = fs::canonical(folder, error);
  if (error) return;  // nothing is there yet
  for (const std::string& input : inputs) {
    const fs::path inner = fs::canonical(input, error);
    if (error) continue;
    if (std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end())
      throw UsageError("what is read would be overwritten", input);
  }
}

}  // namespace varnix::cli
