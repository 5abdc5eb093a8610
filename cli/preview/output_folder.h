// The folder that pictures are written into: all of it appears at once, or nothing does.
#pragma once

#include <filesystem>
#include <string>

namespace varnix::cli {

class OutputFolder {
 public:
  enum class Holds : unsigned char { gallery, differences };

  /// Makes a folder beside the one that is wanted. Throws Failure if that is not possible, or if
  /// something else than an older folder of this kind is in its place.
  explicit OutputFolder(const std::string& wanted, Holds holds = Holds::gallery);
  /// Removes what was not put in place.
  ~OutputFolder();
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;

  /// Where to write.
  const std::filesystem::path& path() const { return path_; }
  /// Where it will be.
  const std::filesystem::path& place() const { return wanted_; }
  /// Puts the folder in its place; an older one there is removed. Throws Failure.
  void putInPlace();

 private:
  Holds holds_;
  std::filesystem::path wanted_;
  std::filesystem::path path_;
  bool isInPlace_ = false;
};

/// In the folder of differences: the list of them.
inline constexpr char kDifferenceList[] = "differences.txt";

}  // namespace varnix::cli
