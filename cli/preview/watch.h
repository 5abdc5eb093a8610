// Follows a container's settings.
#pragma once

#include <functional>
#include <string>

#include "Foundation/notify_folder.h"

namespace varnix::cli {

class SettingsWatch {
 public:
  /// From now on no change is missed. Throws Failure if the container cannot be watched.
  explicit SettingsWatch(const std::string& root);
  /// Calls the function after each change that is announced in the container, once for several
  /// together, until the command is interrupted. Throws Interrupted, and what the function throws.
  [[noreturn]] void follow(const std::function<void()>& changed);

 private:
  bool wasChanged();

  host::NotifyFolderWatch folder_;
};

}  // namespace varnix::cli
