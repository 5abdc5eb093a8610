// One command at a time between reading a folder's file and replacing it.
#pragma once

#include <string>

#include "Foundation/descriptor.h"

namespace varnix::cli {

/// Keeps other commands waiting. The folder carries the lock: the file itself is replaced, and a
/// lock file would be left behind.
class FolderLock {
 public:
  /// Waits for at most ten seconds, then throws Failure. If the folder cannot be locked, nobody is
  /// kept waiting.
  explicit FolderLock(const std::string& folder);

 private:
  host::Descriptor folder_;
};

}  // namespace varnix::cli
