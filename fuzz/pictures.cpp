// Pictures, PNG and JPEG: decoded, written again, and analysed where they are small.
#include <algorithm>
#include <string>

#include "ImageIO/decode.h"
#include "color/AverageColor.h"
#include "color/ImportantColor.h"
#include "hosted_process.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"

using namespace host::imageio;

namespace {

/// Beyond that an input takes too long.
constexpr std::size_t kPixelsToWrite = 1 << 16, kPixelsToAnalyse = 1 << 12;

/// What is written comes back as it was, but for the orientation.
void requireWritable(const Picture& picture) {
  const auto png = encodePng(picture);
  fuzz::require(png.has_value());
  const auto back = decode(*png);
  fuzz::require(back && back->width == picture.width && back->height == picture.height &&
                back->hasAlpha == picture.hasAlpha && back->rgba == picture.rgba);
  const auto jpeg = encodeJpeg(picture, 0.5);
  fuzz::require(jpeg.has_value());
  const auto again = decode(*jpeg);
  fuzz::require(again && again->width == picture.width && again->height == picture.height &&
                again->orientation == picture.orientation);
}

void analyse(std::string_view bytes) {
  const objc::AutoreleasePool pool;
  const auto image =
      Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData,
                                  NSData::dataWithBytes(bytes.data(), bytes.size())));
  if (image.get() == nullptr) return;
  fuzz::require(varnix::Color::AverageColor(image) != nullptr);
  varnix::Color::ImportantColor(image);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::host(host::ProcessKind::application, "com.example.app");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes = fuzz::text(data, size);
  std::string why;
  const auto picture = decode(bytes, &why);
  fuzz::require(picture.has_value() || !why.empty());
  if (!picture) return 0;
  const std::size_t pixels = std::size_t{picture->width} * picture->height;
  fuzz::require(pixels > 0 && picture->rgba.size() == pixels * 4);
  if (pixels <= kPixelsToWrite) requireWritable(*picture);
  if (pixels <= kPixelsToAnalyse) analyse(bytes);
  return 0;
}
