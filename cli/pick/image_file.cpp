#include "pick/image_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Foundation/file_contents.h"
#include "ImageIO/decode.h"
#include "objc/autorelease_pool.h"

namespace varnix::cli::pick {

namespace {

constexpr std::size_t kMaximumBytes = 256 << 20;

/// Why the file could not be read whole.
std::string reasonOf(const std::string& path) {
  struct stat status{};
  if (stat(path.c_str(), &status) != 0) return std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return "is a directory";
  if (!S_ISREG(status.st_mode)) return "is not a file";
  if (static_cast<std::size_t>(status.st_size) > kMaximumBytes) return "is larger than 256 MB";
  return access(path.c_str(), R_OK) == 0 ? "cannot be read" : std::strerror(errno);
}

}  // namespace

Strong<UIImage> imageFromFile(const std::string& path) {
  const objc::AutoreleasePool pool;
  NSData* file = host::fileData(path, kMaximumBytes);
  if (file == nullptr) throw Unreadable(reasonOf(path));
  auto image = Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData, file));
  if (image.get() != nullptr) return image;
  std::string why;
  const auto* bytes = static_cast<const char*>(send(file, NSData::bytes));
  host::imageio::decode({bytes, send(file, NSData::length)}, &why);
  throw Unreadable(why.empty() ? "the image cannot be used" : why);
}

}  // namespace varnix::cli::pick
