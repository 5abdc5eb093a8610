// The cost of a large picture, from the file to the squeeze: decompression takes most of it.
#include "ImageIO/decode.h"
#include "measures.h"
#include "objc/autorelease_pool.h"
#include "picker/CQColorPicker.h"
#include "picker/frame_size.h"
#include "pixels.h"
#include "table.h"
#include "timing.h"

namespace bench {

namespace {

constexpr unsigned kSide = 8000;

/// Soft colours with a little noise, as in a photograph.
host::imageio::Picture photograph() {
  host::imageio::Picture picture{.width = kSide, .height = kSide, .rgba = {}};
  picture.rgba.resize(std::size_t{kSide} * kSide * 4);
  std::uint32_t seed = 1;
  for (std::size_t i = 0; i < picture.rgba.size(); ++i) {
    if (i % 4 == 0) seed = seed * 1664525 + 1013904223;
    const std::size_t x = i / 4 % kSide, y = i / 4 / kSide;
    picture.rgba[i] = static_cast<std::uint8_t>((i % 4 == 0 ? x : y) / 40 + (seed >> 30));
  }
  return picture;
}

void measure(const char* name, const std::string& file) {
  const auto picker = objc::make<CQColorPicker>();
  const objc::AutoreleasePool pool;
  NSData* data = NSData::dataWithBytes(file.data(), file.size());
  const double nanoseconds = bestOf(1, 1, [&] {
    const auto image =
        Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData, data));
    send(picker, CQColorPicker::scaleImage, image, kTotalWidth, kTotalWidth);
  });
  report(name, nanoseconds / 1e6, Goal::atMost(2000));
}

}  // namespace

void measureLargeImages() {
  std::string png, jpeg;
  {
    const auto picture = photograph();
    png = host::imageio::encodePng(picture).value_or("");
    jpeg = host::imageio::encodeJpeg(picture, 0.8).value_or("");
  }
  measure("PNG of 8,000 x 8,000 to 32 x 32, ms", png);
  measure("JPEG of 8,000 x 8,000 to 32 x 32, ms", jpeg);
}

}  // namespace bench
