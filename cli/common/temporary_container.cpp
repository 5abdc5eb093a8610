#include "common/temporary_container.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

#include "Foundation/descriptor.h"
#include "common/errors.h"
#include "common/waiting.h"

namespace varnix::cli {

namespace {

// More than any settings file has; an endless one must not fill the disk.
constexpr std::size_t kLargestCopy = 256 << 20;

// How long to wait for the writer of a pipe.
constexpr std::chrono::seconds kLongestWait{5};

[[noreturn]] void refuse(const std::string& file, const std::string& why) {
  throw Failure("cannot read the settings file", file + ": " + why);
}

/// Does not wait for the other end of a pipe.
int openedToCopy(const std::string& file) {
  const int descriptor = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) refuse(file, std::strerror(errno));
  return descriptor;
}

void copy(const std::string& from, const std::filesystem::path& to) {
  const host::Descriptor in(openedToCopy(from));
  struct stat status = {};
  if (fstat(in.get(), &status) == 0 && S_ISDIR(status.st_mode)) refuse(from, "is a directory");
  const Deadline deadline = std::chrono::steady_clock::now() + kLongestWait;
  std::ofstream out(to, std::ios::binary);
  std::vector<char> block(1 << 16);
  std::size_t total = 0;
  while (true) {
    if (!awaitReadable(in.get(), deadline)) refuse(from, "it did not end within 5 s");
    const ssize_t length = read(in.get(), block.data(), block.size());
    if (length < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (length < 0) refuse(from, std::strerror(errno));
    if (length == 0) break;
    total += static_cast<std::size_t>(length);
    if (total > kLargestCopy) throw Failure("larger than 256 MB", from);
    out.write(block.data(), length);
  }
  out.close();
  if (!out) throw Failure("cannot copy the settings file", from + ": to " + to.string());
}

}  // namespace

TemporaryContainer::Folder::Folder() {
  std::error_code error;
  auto base = std::filesystem::temp_directory_path(error);
  if (error) base = "/tmp";
  path = (base / "varnix-XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr) {
    throw Failure("cannot make a temporary container", base.string() + ": " + std::strerror(errno));
  }
}

TemporaryContainer::Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

TemporaryContainer::TemporaryContainer() = default;

TemporaryContainer::TemporaryContainer(std::string_view devicePath, const std::string& file) {
  const std::filesystem::path target = folder_.path + std::string(devicePath);
  std::filesystem::create_directories(target.parent_path());
  copy(file, target);
}

TemporaryContainer::~TemporaryContainer() = default;

}  // namespace varnix::cli
