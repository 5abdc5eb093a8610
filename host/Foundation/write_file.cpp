#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "Foundation/descriptor.h"
#include "Foundation/property_list.h"

namespace host {

namespace {

constexpr mode_t kPermissions = 0777;

bool writeAll(int file, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t count = write(file, contents.data(), contents.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    contents.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool writeInPlace(const std::string& path, std::string_view contents) {
  // If something else is in the file's place, such as a pipe that nobody reads, this fails instead
  // of waiting.
  Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, 0644));
  return file && writeAll(file.get(), contents) && file.closeNow();
}

/// The old file's owner, where the new one has another.
bool keepOwner(int file, const struct stat& old) {
  struct stat made{};
  if (fstat(file, &made) != 0) return false;
  if (made.st_uid == old.st_uid && made.st_gid == old.st_gid) return true;
  return fchown(file, old.st_uid, old.st_gid) == 0;
}

/// A new file beside the other, with the mode that the user's mask leaves.
int createBeside(const std::string& path, std::string& name) {
  static std::atomic<unsigned> counter = 0;
  constexpr int kAttempts = 100;  // names may be left over from processes that were killed
  for (int i = 0; i < kAttempts; ++i) {
    name = path + "." + std::to_string(getpid()) + "." + std::to_string(counter++);
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file >= 0 || errno != EEXIST) return file;
  }
  return -1;
}

bool writeAtomically(const std::string& path, std::string_view contents) {
  struct stat old{};
  const bool replaces = stat(path.c_str(), &old) == 0;
  std::string temporary;
  Descriptor file(createBeside(path, temporary));
  if (!file) return false;
  const bool keepsStatus = !replaces || (keepOwner(file.get(), old) &&
                                         fchmod(file.get(), old.st_mode & kPermissions) == 0);
  const bool written = keepsStatus && writeAll(file.get(), contents) && file.closeNow();
  if (written && std::rename(temporary.c_str(), path.c_str()) == 0) return true;
  unlink(temporary.c_str());
  return false;
}

/// "PROCESS.NUMBER", as createBeside ends a name, of a process that is gone.
bool isLeftover(std::string_view ending) {
  const char* end = ending.data() + ending.size();
  pid_t process = 0;
  unsigned number = 0;
  const auto first = std::from_chars(ending.data(), end, process);
  if (first.ec != std::errc() || process <= 0 || first.ptr == end || *first.ptr != '.')
    return false;
  const auto second = std::from_chars(first.ptr + 1, end, number);
  return second.ec == std::errc() && second.ptr == end && kill(process, 0) != 0 && errno == ESRCH;
}

}  // namespace

void clearLeftovers(const std::string& path) {
  const std::filesystem::path file = path;
  const std::string start = file.filename().string() + ".";
  std::error_code error;
  for (std::filesystem::directory_iterator entry(file.parent_path(), error), end;
       !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.starts_with(start) && isLeftover(std::string_view(name).substr(start.size())))
      unlink(entry->path().c_str());
  }
}

bool writeFile(const std::string& path, std::string_view contents, bool atomically) {
  return atomically ? writeAtomically(path, contents) : writeInPlace(path, contents);
}

}  // namespace host
