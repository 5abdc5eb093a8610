// Images: a provider's bytes, read as their format says.
#include "CoreGraphics/objects.h"

OBJC_EXPORTED_CLASS(
    CGImage, NSObject, objc::Ivar<"width", &CGImage::width>, objc::Ivar<"height", &CGImage::height>,
    objc::Ivar<"bytesPerRow", &CGImage::bytesPerRow>, objc::Ivar<"format", &CGImage::format>,
    objc::Ivar<"space", &CGImage::space>, objc::Ivar<"provider", &CGImage::provider>,
    objc::Ivar<"decode", &CGImage::decode>, objc::Ivar<"interpolates", &CGImage::interpolates>,
    objc::Ivar<"converted", &CGImage::converted>, objc::Ivar<"pixels", &CGImage::pixels>,
    objc::Ivar<"file", &CGImage::file>, objc::Ivar<"copies", &CGImage::copies>)

cairo_surface_t* CGImage::surface() {
  std::call_once(converted, [this] {
    pixels.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width),
                                            static_cast<int>(height)));
    if (cairo_surface_status(pixels.get()) != CAIRO_STATUS_SUCCESS) return;
    const std::uint8_t* from = provider->start();
    auto* to = cairo_image_surface_get_data(pixels.get());
    const int stride = cairo_image_surface_get_stride(pixels.get());
    for (std::size_t y = 0; y < height; ++y) {
      host::unpackRow(
          format, from + y * bytesPerRow, width, decode.empty() ? nullptr : decode.data(),
          reinterpret_cast<std::uint32_t*>(to + static_cast<std::ptrdiff_t>(y) * stride));
    }
    cairo_surface_mark_dirty(pixels.get());
  });
  return pixels.get();
}

extern "C" {

HOST_EXPORT CGImageRef CGImageCreate(std::size_t width, std::size_t height,
                                     std::size_t bitsPerComponent, std::size_t bitsPerPixel,
                                     std::size_t bytesPerRow, CGColorSpaceRef space,
                                     CGBitmapInfo bitmapInfo, CGDataProviderRef provider,
                                     const CGFloat* decode, bool shouldInterpolate,
                                     CGColorRenderingIntent) {
  if (width == 0 || height == 0 || width > host::kLongestImage || height > host::kLongestImage)
    return nullptr;
  if (space == nullptr || provider == nullptr) return nullptr;
  if (provider->bytes == nullptr && provider->file == nullptr) return nullptr;
  const std::size_t colors = CGColorSpaceGetNumberOfComponents(space);
  const auto format = host::imageFormat(bitsPerComponent, bitsPerPixel, colors, bitmapInfo);
  if (!format || bytesPerRow < width * format->bytesPerPixel()) return nullptr;
  if (bytesPerRow > SIZE_MAX / height ||
      provider->size < bytesPerRow * (height - 1) + width * format->bytesPerPixel())
    return nullptr;
  auto* image = host::makeObject<CGImage>();
  image->width = width;
  image->height = height;
  image->bytesPerRow = bytesPerRow;
  image->format = *format;
  image->space = Strong<CGColorSpace>::retain(space);
  image->provider = Strong<CGDataProvider>::retain(provider);
  if (decode != nullptr) image->decode.assign(decode, decode + 2 * colors);
  image->interpolates = shouldInterpolate;
  image->copies = std::make_shared<host::SmallCopies>();
  return image;
}

HOST_EXPORT CGImageRef CGImageRetain(CGImageRef image) {
  return static_cast<CGImageRef>(objc_retain(image));
}
HOST_EXPORT void CGImageRelease(CGImageRef image) { objc_release(image); }

HOST_EXPORT std::size_t CGImageGetWidth(CGImageRef image) {
  return image == nullptr ? 0 : image->width;
}
HOST_EXPORT std::size_t CGImageGetHeight(CGImageRef image) {
  return image == nullptr ? 0 : image->height;
}
HOST_EXPORT std::size_t CGImageGetBitsPerComponent(CGImageRef image) {
  return image == nullptr ? 0 : image->format.bitsPerComponent;
}
HOST_EXPORT std::size_t CGImageGetBitsPerPixel(CGImageRef image) {
  return image == nullptr ? 0 : image->format.bitsPerPixel;
}
HOST_EXPORT std::size_t CGImageGetBytesPerRow(CGImageRef image) {
  return image == nullptr ? 0 : image->bytesPerRow;
}
HOST_EXPORT CGColorSpaceRef CGImageGetColorSpace(CGImageRef image) {
  return image == nullptr ? nullptr : image->space.get();
}
HOST_EXPORT CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image) {
  return image == nullptr ? 0 : image->format.info;
}
HOST_EXPORT CGBitmapInfo CGImageGetAlphaInfo(CGImageRef image) {
  return CGImageGetBitmapInfo(image) & kCGBitmapAlphaInfoMask;
}
HOST_EXPORT bool CGImageGetShouldInterpolate(CGImageRef image) {
  return image != nullptr && image->interpolates;
}
HOST_EXPORT CGDataProviderRef CGImageGetDataProvider(CGImageRef image) {
  return image == nullptr ? nullptr : image->provider.get();
}
}
