#include "support/bitmaps.h"

namespace test {

CGImageRef createImage(const Bytes& bytes, const Layout& layout) {
  auto* copy = new Bytes(bytes);
  const Provider provider(CGDataProviderCreateWithData(
      copy, copy->data(), copy->size(),
      [](void* info, const void*, std::size_t) { delete static_cast<Bytes*>(info); }));
  const Space space(layout.isGrey ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB());
  const std::size_t row =
      layout.bytesPerRow != 0 ? layout.bytesPerRow : layout.width * layout.bitsPerPixel / 8;
  return CGImageCreate(layout.width, layout.height, layout.bitsPerComponent, layout.bitsPerPixel,
                       row, space, layout.info, provider,
                       layout.decode.empty() ? nullptr : layout.decode.data(), true,
                       CGColorRenderingIntent::standard);
}

CGContextRef createContext(Bytes& bytes, std::size_t width, std::size_t height, CGBitmapInfo info,
                           std::size_t bytesPerRow) {
  const Space space(CGColorSpaceCreateDeviceRGB());
  if (bytesPerRow == 0) bytesPerRow = width * 4;
  bytes.resize(bytesPerRow * height);
  return CGBitmapContextCreate(bytes.data(), width, height, 8, bytesPerRow, space, info);
}

Bytes drawn(CGImageRef image, std::size_t width, std::size_t height) {
  Bytes bytes;
  const Context context(createContext(bytes, width, height));
  CGContextDrawImage(context, {{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}},
                     image);
  return bytes;
}

Bytes drawn(CGImageRef image) {
  return drawn(image, CGImageGetWidth(image), CGImageGetHeight(image));
}

Bytes noise(std::size_t count, std::uint32_t seed) {
  Bytes bytes(count);
  for (auto& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(seed >> 24);
  }
  return bytes;
}

Bytes premultipliedNoise(std::size_t pixels, std::uint32_t seed) {
  Bytes bytes = noise(pixels * 4, seed);
  for (std::size_t i = 0; i < bytes.size(); i += 4) {
    for (std::size_t c = 0; c < 3; ++c)
      bytes[i + c] = static_cast<std::uint8_t>(bytes[i + c] * bytes[i + 3] / 255);
  }
  return bytes;
}

}  // namespace test
