// The folder that a gallery is written into: all of it appears at once, or nothing does.
#pragma once

#include <filesystem>
#include <string>

namespace varnix::cli {

class OutputFolder {
 public:
  /// Makes a folder beside the one that is wanted. Throws Failure if that is not possible, or if
  /// something else than an older gallery is in its place.
  explicit OutputFolder(const std::string& wanted);
  /// Removes what was not put in place.
  ~OutputFolder();
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;

  /// Where to write.
  const std::filesystem::path& path() const { return path_; }
  /// Where it will be.
  const std::filesystem::path& place() const { return wanted_; }
  /// Puts the folder in its place; an older gallery there is removed. Throws Failure.
  void putInPlace();

 private:
  std::filesystem::path wanted_;
  std::filesystem::path path_;
  bool isInPlace_ = false;
};

}  // namespace varnix::cli
