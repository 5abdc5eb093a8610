#include "Foundation/notify_folder.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "process/container.h"

namespace host {

namespace {

constexpr std::size_t kLongestFileName = 200;

/// Empty where no container root is set.
std::string folder() { return hostPath("/.notify"); }

/// FNV-1a.
std::uint64_t hash(std::string_view bytes, std::uint64_t seed) {
  std::uint64_t value = 14695981039346656037U ^ seed;
  for (char byte : bytes) {
    value ^= static_cast<unsigned char>(byte);
    value *= 1099511628211U;
  }
  return value;
}

bool isPlain(char c, bool first) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
  return c == '-' || c == '_' || (c == '.' && !first);
}

/// Makes the folder but not its parent: a root that was removed stays removed.
bool makeFolder(const std::string& path) {
  return !path.empty() && (mkdir(path.c_str(), 0755) == 0 || errno == EEXIST);
}

}  // namespace

std::string notificationFileName(std::string_view name) {
  if (name.empty()) return "%";
  std::string encoded;
  for (char c : name) {
    if (isPlain(c, encoded.empty())) {
      encoded += c;
    } else {
      std::array<char, 4> escape{};
      std::snprintf(escape.data(), escape.size(), "%%%02X", static_cast<unsigned char>(c));
      encoded += escape.data();
    }
  }
  if (encoded.size() <= kLongestFileName) return encoded;
  // "~" occurs in no encoded name.
  std::array<char, 34> digest{};
  std::snprintf(digest.data(), digest.size(), "~%016llx%016llx",
                static_cast<unsigned long long>(hash(name, 0)),
                static_cast<unsigned long long>(hash(name, name.size() + 1)));
  return encoded.substr(0, kLongestFileName / 2) + digest.data();
}

bool touchNotificationFile(const std::string& fileName) {
  const std::string path = folder();
  if (!makeFolder(path)) return false;
  // If there is something else in the file's place, such as a pipe, this fails instead of waiting.
  const int file = open((path + "/" + fileName).c_str(),
                        O_WRONLY | O_CREAT | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC, 0644);
  if (file < 0) return false;
  // Always at the start: the file does not grow, and the write is still an event.
  const bool written = pwrite(file, "!", 1, 0) == 1;
  close(file);
  return written;
}

bool NotifyFolderWatch::start() {
  if (descriptor_ < 0) descriptor_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (descriptor_ < 0) return false;
  const std::string path = folder();
  if (!makeFolder(path)) return false;
  // Creating a file is not an event here: only the write that follows counts.
  watch_ = inotify_add_watch(descriptor_, path.c_str(), IN_MODIFY | IN_ONLYDIR);
  return watch_ >= 0;
}

NotifyFolderWatch::Written NotifyFolderWatch::read() {
  Written written;
  alignas(inotify_event) std::array<char, 16384> buffer;
  ssize_t length = 0;
  while ((length = ::read(descriptor_, buffer.data(), buffer.size())) > 0) {
    for (ssize_t at = 0; at < length;) {
      inotify_event event{};
      std::memcpy(&event, &buffer[static_cast<std::size_t>(at)], sizeof event);
      const char* name = &buffer[static_cast<std::size_t>(at)] + sizeof event;
      at += static_cast<ssize_t>(sizeof event + event.len);
      if ((event.mask & IN_Q_OVERFLOW) != 0) written.anything = true;
      if ((event.mask & IN_IGNORED) != 0 && event.wd == watch_) {
        // The folder was removed. Posts may have been missed until there is a new watch.
        watch_ = -1;
        start();
        written.anything = true;
      }
      if ((event.mask & IN_MODIFY) == 0 || event.len == 0) continue;
      if (std::find(written.files.begin(), written.files.end(), name) == written.files.end()) {
        written.files.emplace_back(name);
      }
    }
  }
  return written;
}

}  // namespace host
