#include "Foundation/file_contents.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "Foundation/descriptor.h"

namespace host {

std::optional<std::string> fileContents(const std::string& path, std::size_t limit) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status{};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > limit) return {};
  std::string contents(size, '\0');
  std::size_t filled = 0;
  while (filled < size) {
    const ssize_t count = read(file.get(), &contents[filled], size - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return {};
    if (count == 0) break;  // cut short meanwhile
    filled += static_cast<std::size_t>(count);
  }
  contents.resize(filled);
  return contents;
}

}  // namespace host
