// The folder through which processes notify each other: each name is a file, each post a write.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace host {

/// The file name for a notification; never empty, and never a name with a special meaning.
HOST_EXPORT std::string notificationFileName(std::string_view name);

/// Writes to the file. False if that is not possible.
bool touchNotificationFile(const std::string& fileName);

/// One process's watch on the folder.
class HOST_EXPORT NotifyFolderWatch {
 public:
  NotifyFolderWatch() = default;
  NotifyFolderWatch(const NotifyFolderWatch&) = delete;
  NotifyFolderWatch& operator=(const NotifyFolderWatch&) = delete;

  /// Makes the folder if it is missing. False if it cannot be watched.
  bool start();
  bool active() const { return watch_ >= 0; }
  int descriptor() const { return descriptor_; }

  struct Written {
    bool anything = false;           ///< events were lost: any file may have been written
    std::vector<std::string> files;  ///< each once, in order
  };
  /// The files that were written since the last call.
  Written read();

 private:
  int descriptor_ = -1;  ///< the inotify instance's; the process keeps it until it ends
  int watch_ = -1;
};

}  // namespace host
