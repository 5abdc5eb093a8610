#include "temporary_container.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

#include "errors.h"

namespace varnix::cli {

namespace {

// More than any settings file; an endless one must not fill the disk.
constexpr std::size_t kLargestCopy = 256 << 20;

void copy(const std::string& from, const std::filesystem::path& to) {
  std::error_code ignored;
  // A stream opens a folder and then reads nothing from it.
  if (std::filesystem::is_directory(from, ignored)) {
    throw Failure("cannot read the settings file", from + ": is a directory");
  }
  errno = 0;
  std::ifstream in(from, std::ios::binary);
  if (!in) throw Failure("cannot read the settings file", from + ": " + std::strerror(errno));
  std::ofstream out(to, std::ios::binary);
  std::vector<char> block(1 << 16);
  std::size_t total = 0;
  while (in.read(block.data(), static_cast<std::streamsize>(block.size())) || in.gcount() > 0) {
    total += static_cast<std::size_t>(in.gcount());
    if (total > kLargestCopy) throw Failure("larger than 256 MB", from);
    out.write(block.data(), in.gcount());
  }
  out.close();
  if (in.bad()) throw Failure("cannot read the settings file", from);
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
