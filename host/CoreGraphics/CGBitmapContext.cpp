// Contexts over memory.
#include <climits>
#include <cstring>

#include "CoreGraphics/objects.h"
#include "Foundation/log.h"

OBJC_EXPORTED_CLASS(
    CGContext, NSObject, objc::Ivar<"width", &CGContext::width>,
    objc::Ivar<"height", &CGContext::height>, objc::Ivar<"bytesPerRow", &CGContext::bytesPerRow>,
    objc::Ivar<"format", &CGContext::format>, objc::Ivar<"space", &CGContext::space>,
    objc::Ivar<"memory", &CGContext::memory>, objc::Ivar<"own", &CGContext::own>,
    objc::Ivar<"inPlace", &CGContext::inPlace>, objc::Ivar<"surface", &CGContext::surface>,
    objc::Ivar<"cairo", &CGContext::cairo>, objc::Ivar<"states", &CGContext::states>)

namespace {

std::uint32_t* row(cairo_surface_t* surface, std::size_t y) {
  return reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface) +
                                          static_cast<std::ptrdiff_t>(y) *
                                              cairo_image_surface_get_stride(surface));
}

CairoSurface surfaceFor(CGContext* context) {
  const auto w = static_cast<int>(context->width);
  const auto h = static_cast<int>(context->height);
  const auto format = host::cairosOwn(context->format);
  if (!context->inPlace || !format)
    return CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h));
  return CairoSurface(cairo_image_surface_create_for_data(context->memory, *format, w, h,
                                                          static_cast<int>(context->bytesPerRow)));
}

/// The limit for memory that the context allocates: more than the largest decoded picture needs.
constexpr std::size_t kMostMemory = std::size_t{512} << 20;

bool drawsInPlace(const CGContext& context) {
  const auto format = host::cairosOwn(context.format);
  // Cairo overwrites the bytes that a format skips. In a caller's memory they must stay.
  if (!format || (*format == CAIRO_FORMAT_RGB24 && context.own == nullptr)) return false;
  // Cairo needs rows of whole pixels, and aligned memory.
  return context.bytesPerRow % 4 == 0 && context.bytesPerRow <= INT_MAX &&
         reinterpret_cast<std::uintptr_t>(context.memory) % 4 == 0;
}

CGContextRef unsupported(std::size_t width, std::size_t height, std::size_t bitsPerComponent,
                         std::size_t bytesPerRow, CGBitmapInfo info) {
  host::log(host::LogLevel::error,
            "CGBitmapContextCreate: unsupported parameter combination: " + std::to_string(width) +
                " x " + std::to_string(height) + ", " + std::to_string(bitsPerComponent) +
                " bits a component, " + std::to_string(bytesPerRow) + " bytes a row, bitmap info " +
                std::to_string(info) + "; a side has " + std::to_string(host::kLongestSide) +
                " pixels at most");
  return nullptr;
}

}  // namespace

void CGContext::load() {
  if (inPlace) return cairo_surface_mark_dirty(surface.get());
  for (std::size_t y = 0; y < height; ++y)
    host::unpackRow(format, memory + y * bytesPerRow, width, nullptr, row(surface.get(), y));
  cairo_surface_mark_dirty(surface.get());
}

void CGContext::store() {
  cairo_surface_flush(surface.get());
  if (inPlace) return;
  for (std::size_t y = 0; y < height; ++y)
    host::packRow(format, row(surface.get(), y), width, memory + y * bytesPerRow);
}

extern "C" {

HOST_EXPORT CGContextRef CGBitmapContextCreate(void* data, std::size_t width, std::size_t height,
                                               std::size_t bitsPerComponent,
                                               std::size_t bytesPerRow, CGColorSpaceRef space,
                                               CGBitmapInfo bitmapInfo) {
  const auto format =
      host::contextFormat(bitsPerComponent, CGColorSpaceGetNumberOfComponents(space), bitmapInfo);
  const bool fits = width != 0 && height != 0 && width <= host::kLongestSide &&
                    height <= host::kLongestSide && format &&
                    (space != nullptr || format->colors == 0);
  if (!fits) return unsupported(width, height, bitsPerComponent, bytesPerRow, bitmapInfo);
  if (bytesPerRow == 0 && data == nullptr) bytesPerRow = width * format->bytesPerPixel();
  if (bytesPerRow < width * format->bytesPerPixel() || bytesPerRow > SIZE_MAX / 2 / height ||
      (data == nullptr && bytesPerRow > kMostMemory / height))
    return unsupported(width, height, bitsPerComponent, bytesPerRow, bitmapInfo);

  auto context = Strong<CGContext>::adopt(host::makeObject<CGContext>());
  context->width = width;
  context->height = height;
  context->bytesPerRow = bytesPerRow;
  context->format = *format;
  context->space = Strong<CGColorSpace>::retain(space);
  context->memory = static_cast<std::uint8_t*>(data);
  if (data == nullptr) {
    // The system provides each page when it is first drawn on.
    context->own.reset(static_cast<std::uint8_t*>(std::calloc(height, bytesPerRow)));
    context->memory = context->own.get();
    if (context->memory == nullptr) return nullptr;
  }
  context->inPlace = drawsInPlace(*context.get());
  context->surface = surfaceFor(context);
  context->cairo.reset(cairo_create(context->surface.get()));
  if (cairo_status(context->cairo.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  // The origin is the lower left corner.
  cairo_set_line_width(context->cairo.get(), 1);
  cairo_translate(context->cairo.get(), 0, static_cast<double>(height));
  cairo_scale(context->cairo.get(), 1, -1);
  return context.leak();
}

HOST_EXPORT CGContextRef CGContextRetain(CGContextRef context) {
  return static_cast<CGContextRef>(objc_retain(context));
}
HOST_EXPORT void CGContextRelease(CGContextRef context) { objc_release(context); }

HOST_EXPORT CGImageRef CGBitmapContextCreateImage(CGContextRef context) {
  if (context == nullptr) return nullptr;
  const std::size_t size = context->bytesPerRow * (context->height - 1) +
                           context->width * context->format.bytesPerPixel();
  void* copy = std::malloc(size);
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, context->memory, size);
  const auto provider = Strong<CGDataProvider>::adopt(CGDataProviderCreateWithData(
      copy, copy, size, [](void* info, const void*, std::size_t) { std::free(info); }));
  const host::PixelFormat& format = context->format;
  return CGImageCreate(context->width, context->height, format.bitsPerComponent,
                       format.bitsPerPixel, context->bytesPerRow, context->space, format.info,
                       provider, nullptr, true, CGColorRenderingIntent::standard);
}

HOST_EXPORT void* CGBitmapContextGetData(CGContextRef context) {
  return context == nullptr ? nullptr : context->memory;
}
HOST_EXPORT std::size_t CGBitmapContextGetWidth(CGContextRef context) {
  return context == nullptr ? 0 : context->width;
}
HOST_EXPORT std::size_t CGBitmapContextGetHeight(CGContextRef context) {
  return context == nullptr ? 0 : context->height;
}
HOST_EXPORT std::size_t CGBitmapContextGetBytesPerRow(CGContextRef context) {
  return context == nullptr ? 0 : context->bytesPerRow;
}
HOST_EXPORT CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context) {
  return context == nullptr ? 0 : context->format.info;
}
HOST_EXPORT CGColorSpaceRef CGBitmapContextGetColorSpace(CGContextRef context) {
  return context == nullptr ? nullptr : context->space.get();
}
}
