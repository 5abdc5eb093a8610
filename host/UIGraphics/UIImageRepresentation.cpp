// Images as files.
#include <cmath>
#include <cstring>

#include "CoreGraphics/objects.h"
#include "ImageIO/decode.h"
#include "UIGraphics/UIGraphics.h"

namespace {

/// The image in a context, as it is shown. No context for an image without a bitmap.
Strong<CGContext> shown(UIImage* image) {
  if (send<CGImageRef>(image, "CGImage"_sel) == nullptr) return {};
  const auto size = send<CGSize>(image, "size"_sel);
  const auto scale = send<CGFloat>(image, "scale"_sel);
  const CGSize pixels = {std::round(size.width * scale), std::round(size.height * scale)};
  UIGraphicsBeginImageContextWithOptions(pixels, false, 1);
  send<void>(image, "drawInRect:"_sel, CGRect{{0, 0}, pixels});
  auto context = Strong<CGContext>::retain(UIGraphicsGetCurrentContext());
  UIGraphicsEndImageContext();
  return context;
}

/// Converts one of cairo's pixels to straight R, G, B, A.
using Convert = void (*)(std::uint32_t pixel, std::uint8_t* to);

void laidOnWhite(std::uint32_t pixel, std::uint8_t* to) {
  const std::uint32_t white = 255 - (pixel >> 24);
  auto part = [&](int shift) {
    return static_cast<std::uint8_t>(std::min<std::uint32_t>(white + (pixel >> shift & 0xff), 255));
  };
  to[0] = part(16);
  to[1] = part(8);
  to[2] = part(0);
  to[3] = 255;
}

void straight(std::uint32_t pixel, std::uint8_t* to) {
  const std::uint32_t alpha = pixel >> 24;
  auto part = [&](int shift) {
    const std::uint32_t value = pixel >> shift & 0xff;
    const std::uint32_t result = alpha == 0 ? 0 : (value * 255 + alpha / 2) / alpha;
    return static_cast<std::uint8_t>(std::min<std::uint32_t>(result, 255));
  };
  to[0] = part(16);
  to[1] = part(8);
  to[2] = part(0);
  to[3] = static_cast<std::uint8_t>(alpha);
}

host::imageio::Picture pictureOf(const CGContext& context, Convert convert) {
  host::imageio::Picture picture;
  picture.width = static_cast<unsigned>(context.width);
  picture.height = static_cast<unsigned>(context.height);
  picture.rgba.resize(context.width * context.height * 4);
  std::uint8_t* to = picture.rgba.data();
  for (std::size_t y = 0; y < context.height; ++y) {
    const std::uint8_t* row = context.memory + y * context.bytesPerRow;
    for (std::size_t x = 0; x < context.width; ++x, to += 4) {
      std::uint32_t pixel;
      std::memcpy(&pixel, row + x * 4, 4);
      convert(pixel, to);
    }
  }
  return picture;
}

bool isOpaque(UIImage* image) {
  switch (CGImageGetAlphaInfo(send<CGImageRef>(image, "CGImage"_sel))) {
    case kCGImageAlphaNone:
    case kCGImageAlphaNoneSkipFirst:
    case kCGImageAlphaNoneSkipLast:
      return true;
    default:
      return false;
  }
}

NSData* dataOf(const std::optional<std::string>& bytes) {
  return bytes ? NSData::dataWithBytes(bytes->data(), bytes->size()) : nullptr;
}

}  // namespace

extern "C" {

HOST_EXPORT NSData* UIImageJPEGRepresentation(UIImage* image, CGFloat quality) {
  const Strong<CGContext> context = shown(image);
  if (context == nullptr) return nullptr;
  // NaN counts as the lowest quality.
  if (!(quality > 0)) quality = 0;
  return dataOf(host::imageio::encodeJpeg(pictureOf(*context.get(), laidOnWhite), quality));
}

HOST_EXPORT NSData* UIImagePNGRepresentation(UIImage* image) {
  const Strong<CGContext> context = shown(image);
  if (context == nullptr) return nullptr;
  auto picture = pictureOf(*context.get(), straight);
  picture.hasAlpha = !isOpaque(image);
  return dataOf(host::imageio::encodePng(picture));
}
}
