// The folder through which processes notify each other: a file a name, a write a post.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace host {

/// The file that stands for a notification; never empty, never one with a special meaning.
HOST_EXPORT std::string notificationFileName(std::string_view name);

/// Writes to the file. False where that is not possible.
bool touchNotificationFile(const std::string& fileName);

/// One process's watch on the folder.
class HOST_EXPORT NotifyFolderWatch {
 public:
  NotifyFolderWatch() = default;
  NotifyFolderWatch(const NotifyFolderWatch&) = delete;
  NotifyFolderWatch& operator=(const NotifyFolderWatch&) = delete;

  /// Makes the folder where it is missing. False where it cannot be watched.
  bool start();
  bool active() const { return watch_ >= 0; }
  int descriptor() const { return descriptor_; }

  struct Written {
    bool anything = false;           ///< events were lost: any file may have been written
    std::vector<std::string> files;  ///< each once, in order
  };
  /// What was written since the last call.
  Written read();

 private:
  int descriptor_ = -1;  ///< of the inotify instance; the process keeps it to its end
  int watch_ = -1;
};

}  // namespace host
