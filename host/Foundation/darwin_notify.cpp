#include "Foundation/darwin_notify.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <string>
#include <vector>

#include "Foundation/log.h"
#include "Foundation/notify_folder.h"
#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "objc/strong.h"
#include "platform/CoreFoundation.h"

struct __CFNotificationCenter {};

namespace host {
namespace {

__CFNotificationCenter darwinCentre;

/// The file of a post that may wait while the observer's process is suspended. A post that may not
/// wait uses the plain name.
std::string waitingFile(const std::string& file) { return file + "~waits"; }

/// The observers of this process.
class Observers {
 public:
  /// Never destroyed, since the run loop calls it.
  static Observers& instance() {
    static auto* observers = new Observers;
    return *observers;
  }

  void add(const void* observer, CFNotificationCallback callback, NSString* name,
           CFNotificationSuspensionBehavior behavior) {
    std::lock_guard lock(mutex_);
    if (entries_.empty()) startWatching();
    entries_.push_back({entries_.size(), observer, callback, Strong<NSString>::retain(name),
                        notificationFileName(text(name)), behavior});
  }

  void setSuspended(bool suspended) {
    std::vector<Entry> due;
    {
      std::lock_guard lock(mutex_);
      suspended_ = suspended;
      if (!suspended) due.swap(held_);
    }
    if (!due.empty()) MainRunLoop::instance().perform([due] { call(due); });
  }

  void post(const std::string& file) {
    const bool written = touchNotificationFile(file);
    std::lock_guard lock(mutex_);
    // Even if files do not work, the process hears its own posts.
    if (entries_.empty() || (written && watch_.active())) return;
    const bool scheduled = !unwritten_.empty();
    if (std::find(unwritten_.begin(), unwritten_.end(), file) == unwritten_.end())
      unwritten_.push_back(file);
    if (!scheduled) MainRunLoop::instance().perform([this] { deliverUnwritten(); });
  }

 private:
  struct Entry {
    std::size_t number;
    const void* observer;
    CFNotificationCallback callback;
    Strong<NSString> name;
    std::string file;
    CFNotificationSuspensionBehavior behavior;
  };

  Observers() = default;

  void startWatching() {
    if (!watch_.start()) {
      log(LogLevel::warning,
          "notifications of other processes cannot be received in this container root");
    }
    if (watch_.descriptor() < 0) return;
    MainRunLoop::instance().watch(watch_.descriptor(), [this] { deliverWritten(); });
  }

  void deliverWritten() {
    NotifyFolderWatch::Written written;
    {
      std::lock_guard lock(mutex_);
      written = watch_.read();
    }
    deliver(written.files, written.anything);
  }

  void deliverUnwritten() {
    std::vector<std::string> files;
    {
      std::lock_guard lock(mutex_);
      files.swap(unwritten_);
    }
    deliver(files, false);
  }

  /// In the order of the posts, then of the observers. A callback may add observers.
  void deliver(const std::vector<std::string>& files, bool anything) {
    std::vector<Entry> due;
    {
      std::lock_guard lock(mutex_);
      if (anything) {
        due = entries_;
      } else {
        for (const std::string& file : files) {
          std::copy_if(entries_.begin(), entries_.end(), std::back_inserter(due),
                       [&](const Entry& entry) {
                         return entry.file == file ||
                                (waitingFile(entry.file) == file && !isKeptBack(entry));
                       });
        }
      }
    }
    call(due);
  }

  /// Whether a post that can wait is kept or dropped now. The mutex is held.
  bool isKeptBack(const Entry& entry) {
    using enum CFNotificationSuspensionBehavior;
    if (!suspended_ || entry.behavior == deliverImmediately) return false;
    const bool waits = std::any_of(held_.begin(), held_.end(),
                                   [&](const Entry& held) { return held.number == entry.number; });
    if (entry.behavior == hold || (entry.behavior == coalesce && !waits)) held_.push_back(entry);
    return true;
  }

  static void call(const std::vector<Entry>& due) {
    for (const Entry& entry : due) {
      entry.callback(&darwinCentre, const_cast<void*>(entry.observer), entry.name, nullptr,
                     nullptr);
    }
  }

  std::mutex mutex_;
  std::vector<Entry> entries_;
  std::vector<std::string> unwritten_;
  std::vector<Entry> held_;  ///< called when the process is resumed
  bool suspended_ = false;
  NotifyFolderWatch watch_;
};

}  // namespace

void postDarwinNotification(std::string_view name, bool immediately) {
  const std::string file = notificationFileName(name);
  Observers::instance().post(immediately ? file : waitingFile(file));
}

void suspendDarwinNotifications(bool suspended) { Observers::instance().setSuspended(suspended); }

}  // namespace host

extern "C" {

HOST_EXPORT CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter() {
  return &host::darwinCentre;
}

HOST_EXPORT void CFNotificationCenterAddObserver(CFNotificationCenterRef center,
                                                 const void* observer,
                                                 CFNotificationCallback callback, CFStringRef name,
                                                 const void* /*object*/,
                                                 CFNotificationSuspensionBehavior behavior) {
  if (center != &host::darwinCentre || callback == nullptr || name == nullptr) return;
  host::Observers::instance().add(observer, callback, name, behavior);
}

HOST_EXPORT void CFNotificationCenterPostNotification(CFNotificationCenterRef center,
                                                      CFStringRef name, const void* /*object*/,
                                                      CFDictionaryRef /*userInfo*/,
                                                      bool deliverImmediately) {
  if (center != &host::darwinCentre || name == nullptr) return;
  host::postDarwinNotification(host::text(name), deliverImmediately);
}
}
