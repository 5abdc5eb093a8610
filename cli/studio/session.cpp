#include "studio/session.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <utility>

#include "common/errors.h"
#include "common/json.h"
#include "objc/autorelease_pool.h"

namespace varnix::cli {

namespace {

/// A drag through colours is written a few times a second.
constexpr std::chrono::milliseconds kSavingPause{150};

}  // namespace

Session::Session(std::optional<std::string> file)
    : theme_([&] {
        const objc::AutoreleasePool pool;
        return Theme(file);
      }()),
      file_(std::move(file)) {
  const objc::AutoreleasePool pool;
  shown_ = {theme_.revision(), theme_.bytes()};
}

void Session::begin() {
  wake_ = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  watch_ = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
  if (wake_ < 0 || watch_ < 0) throw Failure("cannot begin", std::strerror(errno));
  if (file_) {
    // Editors replace a file as often as they write into it.
    const auto folder = std::filesystem::weakly_canonical(*file_).parent_path();
    if (inotify_add_watch(watch_, folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO) < 0)
      throw Failure("cannot watch the folder", folder.string() + ": " + std::strerror(errno));
  }
  thread_ = std::thread([this] { follow(); });
}

void Session::end() {
  const std::lock_guard lock(mutex_);
  isEnding_ = true;
  changed_.notify_all();
  const std::uint64_t one = 1;
  if (wake_ >= 0 && write(wake_, &one, sizeof one) < 0) return;
}

Session::~Session() {
  end();
  if (thread_.joinable()) thread_.join();
  for (const int descriptor : {wake_, watch_}) {
    if (descriptor >= 0) close(descriptor);
  }
  const objc::AutoreleasePool pool;
  theme_.save();
}

void Session::tell(const std::function<void(Theme&)>& use) {
  const long version = theme_.version();
  use(theme_);
  if (theme_.version() == version) return;
  if (theme_.revision() != shown_.revision) shown_ = {theme_.revision(), theme_.bytes()};
  changed_.notify_all();
  const std::uint64_t one = 1;
  if (write(wake_, &one, sizeof one) < 0) return;
}

void Session::with(const std::function<void(Theme&)>& use) {
  const objc::AutoreleasePool pool;
  const std::lock_guard lock(mutex_);
  tell(use);
}

Json Session::json() {
  const objc::AutoreleasePool pool;
  const std::lock_guard lock(mutex_);
  return theme_.json();
}

Json Session::news(long known, std::chrono::milliseconds patience) {
  const objc::AutoreleasePool pool;
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, patience, [&] { return isEnding_ || theme_.version() != known; });
  return theme_.json();
}

Shown Session::shown() {
  const std::lock_guard lock(mutex_);
  return shown_;
}

void Session::follow() {
  std::optional<std::chrono::steady_clock::time_point> saving;
  // A save that failed is tried again once something changes.
  long tried = -1;
  while (true) {
    int timeout = -1;
    if (saving) {
      const auto left =
          std::chrono::ceil<std::chrono::milliseconds>(*saving - std::chrono::steady_clock::now());
      timeout = static_cast<int>(std::max<long>(left.count(), 0));
    }
    pollfd ready[] = {{wake_, POLLIN, 0}, {watch_, POLLIN, 0}};
    poll(ready, std::size(ready), timeout);
    char ignored[4096];
    while (read(wake_, ignored, sizeof ignored) > 0) {
    }
    bool isWritten = false;
    while (read(watch_, ignored, sizeof ignored) > 0) isWritten = true;
    const objc::AutoreleasePool pool;
    const std::lock_guard lock(mutex_);
    if (isEnding_) return;
    if (isWritten) tell([](Theme& theme) { theme.look(); });
    if (saving && std::chrono::steady_clock::now() >= *saving) {
      tell([](Theme& theme) { theme.save(); });
      saving.reset();
      tried = theme_.version();
    } else if (!saving && !theme_.isSaved() && theme_.version() != tried) {
      saving = std::chrono::steady_clock::now() + kSavingPause;
    }
  }
}

}  // namespace varnix::cli
