// Images as files.
#include <cstring>

#include "CoreGraphics/objects.h"
#include "ImageIO/decode.h"
#include "platform/UIKit.h"

namespace {

/// The image as it is shown, at its own size; nothing for one without bitmap.
std::optional<host::imageio::Picture> pictureOf(UIImage* image) {
  const auto size = send<CGSize>(image, "size"_sel);
  const auto scale = send<CGFloat>(image, "scale"_sel);
  if (!(size.width > 0 && size.height > 0)) return {};
  UIGraphicsBeginImageContextWithOptions(size, false, scale);
  send<void>(image, "drawInRect:"_sel, CGRect{{0, 0}, size});
  CGContextRef context = UIGraphicsGetCurrentContext();
  std::optional<host::imageio::Picture> picture;
  if (context != nullptr) {
    picture.emplace();
    picture->width = static_cast<unsigned>(context->width);
    picture->height = static_cast<unsigned>(context->height);
    picture->hasAlpha = true;
    picture->rgba.resize(context->width * context->height * 4);
    for (std::size_t i = 0; i < context->width * context->height; ++i) {
      std::uint32_t pixel;
      std::memcpy(&pixel, context->memory + i * 4, 4);
      const unsigned alpha = pixel >> 24;
      auto straight = [&](int shift) {
        const unsigned part = pixel >> shift & 0xff;
        return static_cast<std::uint8_t>(
            alpha == 0 ? 0 : std::min(255U, (part * 255 + alpha / 2) / alpha));
      };
      std::uint8_t* to = picture->rgba.data() + i * 4;
      to[0] = straight(16);
      to[1] = straight(8);
      to[2] = straight(0);
      to[3] = static_cast<std::uint8_t>(alpha);
    }
  }
  UIGraphicsEndImageContext();
  return picture;
}

NSData* dataOf(const std::optional<std::string>& bytes) {
  return bytes ? NSData::dataWithBytes(bytes->data(), bytes->size()) : nullptr;
}

}  // namespace

extern "C" {

HOST_EXPORT NSData* UIImageJPEGRepresentation(UIImage* image, CGFloat quality) {
  const auto picture = pictureOf(image);
  return picture ? dataOf(host::imageio::encodeJpeg(*picture, quality)) : nullptr;
}

HOST_EXPORT NSData* UIImagePNGRepresentation(UIImage* image);
NSData* UIImagePNGRepresentation(UIImage* image) {
  const auto picture = pictureOf(image);
  return picture ? dataOf(host::imageio::encodePng(*picture)) : nullptr;
}
}
