// A container root that exists as long as the command, empty or with a copy of one file.
#pragma once

#include <string>
#include <string_view>

namespace varnix::cli {

class TemporaryContainer {
 public:
  /// Throws Failure.
  TemporaryContainer();
  /// Copies the file, whatever it contains, to the device path. A pipe must end within 5 s. Throws
  /// Failure and Interrupted.
  TemporaryContainer(std::string_view devicePath, const std::string& file);
  ~TemporaryContainer();
  TemporaryContainer(const TemporaryContainer&) = delete;
  TemporaryContainer& operator=(const TemporaryContainer&) = delete;

  const std::string& root() const { return folder_.path; }

 private:
  struct Folder {
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string path;
  };
  Folder folder_;
};

}  // namespace varnix::cli
