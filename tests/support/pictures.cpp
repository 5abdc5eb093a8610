#include "support/pictures.h"

namespace test {

UIImage* picture(std::size_t width, std::size_t height,
                 const std::function<Pixel(std::size_t x, std::size_t y)>& pixelAt) {
  auto* bytes = new std::vector<std::uint8_t>;
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x) {
      const Pixel pixel = pixelAt(x, y);
      bytes->insert(bytes->end(), pixel.begin(), pixel.end());
    }
  }
  CGDataProviderRef provider = CGDataProviderCreateWithData(
      bytes, bytes->data(), bytes->size(), [](void* info, const void*, std::size_t) {
        delete static_cast<std::vector<std::uint8_t>*>(info);
      });
  const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
  const objc::Owned<CGImageRef, &CGImageRelease> image(
      CGImageCreate(width, height, 8, 32, width * 4, space, kCGImageAlphaPremultipliedLast,
                    provider, nullptr, false, CGColorRenderingIntent::standard));
  CGDataProviderRelease(provider);
  return UIImage::imageWithCGImage(image);
}

UIImage* plainPicture(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return picture(40, 40, [=](std::size_t, std::size_t) { return Pixel{red, green, blue, 255}; });
}

}  // namespace test
