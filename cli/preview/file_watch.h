// Follows one file, however it is changed: written in place, replaced, removed and made again.
#pragma once

#include <array>
#include <filesystem>
#include <string>

#include "Foundation/descriptor.h"
#include "common/waiting.h"

namespace varnix::cli {

class FileWatch {
 public:
  /// From now on no change is missed. Throws Failure for what is no plain file, or cannot be
  /// watched.
  explicit FileWatch(const std::string& file);
  /// Waits until the file may have changed, and then until nobody has touched it for a moment.
  /// False if the deadline comes first. Throws Interrupted.
  bool wait(const Deadline& deadline);

 private:
  struct Watched {
    std::filesystem::path place;
    int watch = -1;  ///< of its folder
  };
  /// Notes where a link leads now. Watches folders that are not watched; whether there were any.
  bool watchFolders();
  bool isAnyMissing() const;
  /// Whether one of the events that have come is about the file.
  bool takeEvents();

  std::filesystem::path file_;
  host::Descriptor descriptor_;  ///< the inotify instance's
  /// The file by its name, and by the name to which a link leads.
  std::array<Watched, 2> watched_;
};

}  // namespace varnix::cli
