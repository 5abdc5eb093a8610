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

/// The observers of this process.
class Observers {
 public:
  /// Lives as long as the process: the run loop calls it.
  static Observers& instance() {
    static auto* observers = new Observers;
    return *observers;
  }

  void add(const void* observer, CFNotificationCallback callback, NSString* name) {
    std::lock_guard lock(mutex_);
    if (entries_.empty()) startWatching();
    entries_.push_back(
        {observer, callback, Strong<NSString>::retain(name), notificationFileName(text(name))});
  }

  void post(const std::string& file) {
    const bool written = touchNotificationFile(file);
    std::lock_guard lock(mutex_);
    // Where files do not work, the process still hears itself.
    if (entries_.empty() || (written && watch_.active())) return;
    const bool scheduled = !unwritten_.empty();
    if (std::find(unwritten_.begin(), unwritten_.end(), file) == unwritten_.end())
      unwritten_.push_back(file);
    if (!scheduled) MainRunLoop::instance().perform([this] { deliverUnwritten(); });
  }

 private:
  struct Entry {
    const void* observer;
    CFNotificationCallback callback;
    Strong<NSString> name;
    std::string file;
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
                       [&](const Entry& entry) { return entry.file == file; });
        }
      }
    }
    for (const Entry& entry : due) {
      entry.callback(&darwinCentre, const_cast<void*>(entry.observer), entry.name, nullptr,
                     nullptr);
    }
  }

  std::mutex mutex_;
  std::vector<Entry> entries_;
  std::vector<std::string> unwritten_;
  NotifyFolderWatch watch_;
};

}  // namespace

void postDarwinNotification(std::string_view name) {
  Observers::instance().post(notificationFileName(name));
}

}  // namespace host

extern "C" {

HOST_EXPORT CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter() {
  return &host::darwinCentre;
}

HOST_EXPORT void CFNotificationCenterAddObserver(CFNotificationCenterRef center,
                                                 const void* observer,
                                                 CFNotificationCallback callback, CFStringRef name,
                                                 const void* /*object*/,
                                                 CFNotificationSuspensionBehavior /*behavior*/) {
  if (center != &host::darwinCentre || callback == nullptr || name == nullptr) return;
  host::Observers::instance().add(observer, callback, name);
}

HOST_EXPORT void CFNotificationCenterPostNotification(CFNotificationCenterRef center,
                                                      CFStringRef name, const void* /*object*/,
                                                      CFDictionaryRef /*userInfo*/,
                                                      bool /*deliverImmediately*/) {
  if (center != &host::darwinCentre || name == nullptr) return;
  host::postDarwinNotification(host::text(name));
}
}
