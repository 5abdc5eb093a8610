// One command at a time between reading a folder's file and replacing it.
#pragma once

#include <string>

#include "Foundation/descriptor.h"

namespace varnix::cli {

/// Holds other commands off. The folder carries the lock: the file itself is replaced, and a file
/// of its own would be left behind.
class FolderLock {
 public:
  /// Waits for ten seconds at most, then throws Failure. Where a folder cannot be locked nobody is
  /// held off.
  explicit FolderLock(const std::string& folder);

 private:
  host::Descriptor folder_;
};

}  // namespace varnix::cli
