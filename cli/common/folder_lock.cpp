#include "common/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "common/errors.h"

namespace varnix::cli {

namespace {

constexpr std::chrono::seconds kLongestWait{10};
constexpr std::chrono::milliseconds kBetweenTries{10};

}  // namespace

FolderLock::FolderLock(const std::string& folder)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  const auto end = std::chrono::steady_clock::now() + kLongestWait;
  while (folder_ && flock(folder_.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return;
    if (std::chrono::steady_clock::now() > end)
      throw Failure("another command has been changing a file for 10 s in", folder);
    std::this_thread::sleep_for(kBetweenTries);
  }
}

}  // namespace varnix::cli
