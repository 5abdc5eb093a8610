#include "ImageIO/decode.h"

#include "ImageIO/formats.h"

namespace host::imageio {

namespace {

constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1a\n";
constexpr std::string_view kJpegSignature = "\xff\xd8\xff";

}  // namespace

std::string sizeProblem(std::uint64_t width, std::uint64_t height) {
  if (width == 0 || height == 0) return "the image has no pixels";
  if (width <= kMaximumSide && height <= kMaximumSide && width * height <= kMaximumPixels) {
    return {};
  }
  return "the image is too large (" + std::to_string(width) + " x " + std::to_string(height) + ")";
}

bool isConsistent(const Picture& picture) {
  return sizeProblem(picture.width, picture.height).empty() &&
         picture.rgba.size() == bytesPerRow(picture) * picture.height;
}

std::optional<Picture> decode(std::string_view bytes, std::string* why) {
  std::string ignored;
  std::string& reason = why != nullptr ? *why : ignored;
  if (bytes.starts_with(kPngSignature)) return decodePng(bytes, reason);
  if (bytes.starts_with(kJpegSignature)) return decodeJpeg(bytes, reason);
  reason = "not a PNG or JPEG image";
  return {};
}

}  // namespace host::imageio
