#include "preview/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "common/errors.h"
#include "common/waiting.h"

namespace varnix::cli {

namespace fs = std::filesystem;

namespace {

using std::chrono::milliseconds;
using WatchClock = std::chrono::steady_clock;

// Several writes in a row are one change: how long to wait for another, and for all of them.
constexpr milliseconds kQuiet{10};
constexpr milliseconds kLongestUnrest{500};
// How often to look for a folder that has gone.
constexpr milliseconds kBetweenLooks{250};
constexpr auto kNever = WatchClock::time_point::max();

constexpr std::uint32_t kEvents = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_CREATE | IN_DELETE |
                                  IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF |
                                  IN_ONLYDIR;

}  // namespace

FileWatch::FileWatch(const std::string& file)
    : file_(fs::absolute(file).lexically_normal()),
      descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  std::error_code error;
  if (!fs::is_regular_file(file, error))
    throw Failure("cannot follow", file + ": " + (error ? error.message() : "not a plain file"));
  watched_[0].place = file_;
  watchFolders();
  if (isAnyMissing()) throw Failure("cannot follow", file + ": " + std::strerror(errno));
}

bool FileWatch::watchFolders() {
  std::error_code error;
  const fs::path target = fs::canonical(file_, error);
  if (!error && target != watched_[1].place) watched_[1] = {target};
  bool anyWasMissing = false;
  for (Watched& watched : watched_) {
    if (watched.watch >= 0) continue;
    anyWasMissing = true;
    const std::string folder = watched.place.parent_path().string();
    watched.watch = inotify_add_watch(descriptor_.get(), folder.c_str(), kEvents);
  }
  return anyWasMissing;
}

bool FileWatch::isAnyMissing() const {
  return std::any_of(watched_.begin(), watched_.end(),
                     [](const Watched& watched) { return watched.watch < 0; });
}

bool FileWatch::takeEvents() {
  bool isAboutFile = false;
  alignas(inotify_event) std::array<char, 16384> buffer;
  ssize_t length = 0;
  while ((length = read(descriptor_.get(), buffer.data(), buffer.size())) > 0) {
    for (ssize_t at = 0; at < length;) {
      inotify_event event{};
      std::memcpy(&event, &buffer[static_cast<std::size_t>(at)], sizeof event);
      const char* name = &buffer[static_cast<std::size_t>(at)] + sizeof event;
      at += static_cast<ssize_t>(sizeof event + event.len);
      if ((event.mask & IN_Q_OVERFLOW) != 0) isAboutFile = true;
      for (Watched& watched : watched_) {
        if (event.wd != watched.watch) continue;
        // A folder that was renamed is no longer at its place.
        if ((event.mask & IN_MOVE_SELF) != 0) inotify_rm_watch(descriptor_.get(), event.wd);
        if ((event.mask & (IN_IGNORED | IN_MOVE_SELF)) != 0) watched.watch = -1;
        if (watched.watch < 0 || (event.len > 0 && watched.place.filename() == name))
          isAboutFile = true;
      }
    }
  }
  return isAboutFile;
}

bool FileWatch::wait(const Deadline& deadline) {
  while (true) {
    // A folder that has come back may hold another file.
    const bool wasMissing = watchFolders();
    const bool isMissing = isAnyMissing();
    if (wasMissing && !isMissing) break;
    if (isOver(deadline)) return false;
    Deadline next = deadline;
    if (isMissing) next = std::min(WatchClock::now() + kBetweenLooks, deadline.value_or(kNever));
    if (awaitReadable(descriptor_.get(), next) && takeEvents()) break;
  }
  const Deadline end = WatchClock::now() + kLongestUnrest;
  while (!isOver(end) && awaitReadable(descriptor_.get(), WatchClock::now() + kQuiet)) takeEvents();
  return true;
}

}  // namespace varnix::cli
