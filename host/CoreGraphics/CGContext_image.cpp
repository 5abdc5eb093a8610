// Images drawn into contexts. Shrinking is averaging; the rest is cairo's.
#include <cmath>

#include "CoreGraphics/drawing.h"
#include "CoreGraphics/shrink.h"

namespace {

constexpr double kTiny = 1e-6;

bool isWhole(double value) { return std::abs(value - std::round(value)) < kTiny; }
bool isAxisAligned(const cairo_matrix_t& m) {
  return std::abs(m.xy) < kTiny && std::abs(m.yx) < kTiny;
}
bool isPixelForPixel(const cairo_matrix_t& m) {
  return isAxisAligned(m) && std::abs(std::abs(m.xx) - 1) < kTiny &&
         std::abs(std::abs(m.yy) - 1) < kTiny && isWhole(m.x0) && isWhole(m.y0);
}

/// How many pixels the image takes on the device, along its own axis.
std::size_t pixelsTaken(double along, double across, std::size_t pixels) {
  const double length = std::hypot(along, across) * static_cast<double>(pixels);
  const double taken = isWhole(length) ? std::round(length) : std::ceil(length);
  if (!(taken < static_cast<double>(pixels))) return pixels;
  return std::max<std::size_t>(static_cast<std::size_t>(taken), 1);
}

host::PixelRows rowsOf(cairo_surface_t* surface) {
  return {reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface)),
          static_cast<std::size_t>(cairo_image_surface_get_stride(surface)) / 4,
          static_cast<std::size_t>(cairo_image_surface_get_width(surface)),
          static_cast<std::size_t>(cairo_image_surface_get_height(surface))};
}

CairoSurface shrunk(cairo_surface_t* from, std::size_t width, std::size_t height) {
  CairoSurface small(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width),
                                                static_cast<int>(height)));
  if (cairo_surface_status(small.get()) == CAIRO_STATUS_SUCCESS)
    host::shrink(rowsOf(from), rowsOf(small.get()));
  cairo_surface_mark_dirty(small.get());
  return small;
}

}  // namespace

extern "C" HOST_EXPORT void CGContextDrawImage(CGContextRef context, CGRect rect,
                                               CGImageRef image) {
  if (context == nullptr || image == nullptr || !(rect.size.width != 0) || !(rect.size.height != 0))
    return;
  cairo_surface_t* source = image->surface();
  if (cairo_surface_status(source) != CAIRO_STATUS_SUCCESS) return;
  const host::Drawing drawing(context);
  cairo_t* cairo = drawing.cairo();
  cairo_save(cairo);
  // From here on the image's own pixels are the unit, its top row first.
  cairo_translate(cairo, rect.origin.x, rect.origin.y + rect.size.height);
  cairo_scale(cairo, rect.size.width / static_cast<double>(image->width),
              -rect.size.height / static_cast<double>(image->height));
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  CairoSurface small;
  const std::size_t width = pixelsTaken(matrix.xx, matrix.yx, image->width);
  const std::size_t height = pixelsTaken(matrix.xy, matrix.yy, image->height);
  if (width < image->width || height < image->height) {
    small = shrunk(source, width, height);
    source = small.get();
    cairo_scale(cairo, static_cast<double>(image->width) / static_cast<double>(width),
                static_cast<double>(image->height) / static_cast<double>(height));
    cairo_get_matrix(cairo, &matrix);
  }
  cairo_set_source_surface(cairo, source, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(cairo),
                           isPixelForPixel(matrix) ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
  cairo_rectangle(cairo, 0, 0, static_cast<double>(width), static_cast<double>(height));
  cairo_clip(cairo);
  cairo_paint_with_alpha(cairo, context->state().alpha);
  cairo_restore(cairo);
}
