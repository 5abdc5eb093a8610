// Following a container's settings.
#pragma once

#include <functional>
#include <string>

#include "Foundation/notify_folder.h"

namespace varnix::cli {

class SettingsWatch {
 public:
  /// From now on no change is missed. Throws Failure where the container cannot be watched.
  explicit SettingsWatch(const std::string& root);
  /// Calls the function after each change that is told in the container, once for several of them,
  /// until it is interrupted. Throws Interrupted, and what the function throws.
  [[noreturn]] void follow(const std::function<void()>& changed);

 private:
  bool wasChanged();

  host::NotifyFolderWatch folder_;
};

}  // namespace varnix::cli
