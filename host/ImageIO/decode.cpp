#include "ImageIO/decode.h"

#include "ImageIO/formats.h"

namespace host::imageio {

namespace {

constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1a\n";
constexpr std::string_view kJpegSignature = "\xff\xd8\xff";

class WholePicture final : public Rows {
 public:
  bool begin(const Header& header) override {
    picture = {header.width, header.height, header.hasAlpha, header.orientation, {}};
    return true;
  }
  bool take(const std::uint8_t* rgba) override {
    // Row by row: a file of a few bytes must not make the memory of a large picture be touched.
    if (picture.rgba.empty()) picture.rgba.reserve(bytesPerRow(picture) * picture.height);
    picture.rgba.insert(picture.rgba.end(), rgba, rgba + bytesPerRow(picture));
    return true;
  }

  Picture picture;
};

}  // namespace

std::string sizeProblem(std::uint64_t width, std::uint64_t height, std::uint64_t longest) {
  if (width == 0 || height == 0) return "the image has no pixels";
  const std::string size =
      "the image is too large (" + std::to_string(width) + " x " + std::to_string(height) + "; ";
  if (width > longest || height > longest)
    return size + "a side has " + std::to_string(longest) + " pixels at most)";
  if (width * height > kMaximumPixels)
    return size + std::to_string(kMaximumPixels) + " pixels at most)";
  return {};
}

void makeOpaque(std::span<std::uint8_t> rgba) {
  for (std::size_t i = 3; i < rgba.size(); i += 4) rgba[i] = 255;
}

bool isConsistent(const Picture& picture) {
  return sizeProblem(picture.width, picture.height, kMaximumSide).empty() &&
         picture.rgba.size() == bytesPerRow(picture) * picture.height;
}

bool readRows(std::string_view bytes, Rows& rows, std::string& problem) {
  problem.clear();
  if (bytes.starts_with(kPngSignature)) return readPng(bytes, rows, problem);
  if (bytes.starts_with(kJpegSignature)) return readJpeg(bytes, rows, problem);
  problem = "not a PNG or JPEG image";
  return false;
}

std::optional<Picture> decode(std::string_view bytes, std::string* problem) {
  std::string ignored;
  WholePicture whole;
  if (!readRows(bytes, whole, problem != nullptr ? *problem : ignored)) return {};
  Picture& picture = whole.picture;
  const std::size_t there = picture.rgba.size();
  picture.rgba.resize(bytesPerRow(picture) * picture.height);
  if (!picture.hasAlpha) makeOpaque(std::span(picture.rgba).subspan(there));
  return std::move(picture);
}

}  // namespace host::imageio
