// Draws images into contexts. Shrinking takes means; cairo does the rest.
#include <algorithm>
#include <cmath>

#include "CoreGraphics/drawing.h"

namespace {

constexpr double kTiny = 1e-6;

/// Limit for images that are scaled or drawn between pixels: pixman leaves out longer ones.
constexpr double kLongestStretched = 32'000;

bool isWhole(double value) { return std::abs(value - std::round(value)) < kTiny; }

/// Whether each of the image's pixels falls on one of the bitmap's, possibly turned or mirrored. If
/// so, rounds the matrix to exactly that.
bool isPixelForPixel(cairo_matrix_t& m) {
  const bool isUpright =
      std::abs(std::abs(m.xx) - 1) < kTiny && std::abs(std::abs(m.yy) - 1) < kTiny;
  const bool isTurned =
      std::abs(std::abs(m.xy) - 1) < kTiny && std::abs(std::abs(m.yx) - 1) < kTiny;
  if (isUpright == isTurned) return false;
  for (double* part : {&m.xx, &m.yx, &m.xy, &m.yy, &m.x0, &m.y0}) {
    if (!isWhole(*part)) return false;
  }
  for (double* part : {&m.xx, &m.yx, &m.xy, &m.yy, &m.x0, &m.y0}) *part = std::round(*part);
  return true;
}

bool enlarges(const cairo_matrix_t& m) {
  return std::hypot(m.xx, m.yx) > 1 + kTiny || std::hypot(m.xy, m.yy) > 1 + kTiny;
}

/// How many pixels the image covers on the device, along its own axis.
std::size_t pixelsTaken(double along, double across, std::size_t pixels) {
  const double length = std::hypot(along, across) * static_cast<double>(pixels);
  double taken = isWhole(length) ? std::round(length) : std::ceil(length);
  if (pixels > host::kLongestSide) taken = std::min(taken, kLongestStretched);
  if (!(taken < static_cast<double>(pixels))) return pixels;
  return std::max<std::size_t>(static_cast<std::size_t>(taken), 1);
}

/// Several threads may draw one image at once, but cairo's surfaces are not safe for that.
CairoSurface viewOf(CGImageRef image) {
  cairo_surface_t* shared = image->surface();
  if (cairo_surface_status(shared) != CAIRO_STATUS_SUCCESS) return nullptr;
  return CairoSurface(cairo_image_surface_create_for_data(
      cairo_image_surface_get_data(shared), CAIRO_FORMAT_ARGB32,
      cairo_image_surface_get_width(shared), cairo_image_surface_get_height(shared),
      cairo_image_surface_get_stride(shared)));
}

/// A grey image without alpha as a mask: white covers fully, black not at all.
CairoSurface coverOf(cairo_surface_t* greys) {
  const int width = cairo_image_surface_get_width(greys);
  const int height = cairo_image_surface_get_height(greys);
  CairoSurface cover(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
  if (cairo_surface_status(cover.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  auto rowOf = [](cairo_surface_t* surface, int y) {
    return reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface) +
                                            static_cast<std::ptrdiff_t>(y) *
                                                cairo_image_surface_get_stride(surface));
  };
  for (int y = 0; y < height; ++y) {
    const std::uint32_t* from = rowOf(greys, y);
    std::transform(from, from + width, rowOf(cover.get(), y),
                   [](std::uint32_t pixel) { return pixel << 24; });
  }
  cairo_surface_mark_dirty(cover.get());
  return cover;
}

bool isOpaqueGrey(const CGImage& image) {
  return image.format.colors == 1 && image.format.alpha() == kCGImageAlphaNone;
}

cairo_filter_t filterFor(CGContextRef context, CGImageRef image, const cairo_matrix_t& matrix) {
  const bool isSmooth =
      image->interpolates && context->state().interpolation != CGInterpolationQuality::none;
  return isSmooth || !enlarges(matrix) ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST;
}

}  // namespace

bool host::setImage(CGContextRef context, cairo_t* cairo, CGRect rect, CGImageRef image,
                    ImageUse use) {
  // From here on the unit is the image's own pixel, with the top row first.
  if (!host::concatenate(cairo, {rect.size.width / static_cast<double>(image->width), 0, 0,
                                 -rect.size.height / static_cast<double>(image->height),
                                 rect.origin.x, rect.origin.y + rect.size.height}))
    return false;
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  const std::size_t width = pixelsTaken(matrix.xx, matrix.yx, image->width);
  const std::size_t height = pixelsTaken(matrix.xy, matrix.yy, image->height);
  const bool isSmaller = width < image->width || height < image->height;
  CairoSurface source = isSmaller ? image->shrunk(width, height) : viewOf(image);
  if (source != nullptr && use == ImageUse::mask && isOpaqueGrey(*image))
    source = coverOf(source.get());
  if (source == nullptr) return false;
  if (isSmaller) {
    cairo_matrix_scale(&matrix, static_cast<double>(image->width) / static_cast<double>(width),
                       static_cast<double>(image->height) / static_cast<double>(height));
  }
  const bool isExact = isPixelForPixel(matrix);
  cairo_set_matrix(cairo, &matrix);
  cairo_set_source_surface(cairo, source.get(), 0, 0);
  cairo_pattern_t* pattern = cairo_get_source(cairo);
  cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(pattern,
                           isExact ? CAIRO_FILTER_NEAREST : filterFor(context, image, matrix));
  return true;
}

extern "C" HOST_EXPORT void CGContextDrawImage(CGContextRef context, CGRect rect,
                                               CGImageRef image) {
  if (context == nullptr || image == nullptr) return;
  auto prepare = [&](cairo_t* cairo) {
    return host::clipTo(cairo, rect) &&
           host::setImage(context, cairo, rect, image, host::ImageUse::colors);
  };
  host::composite(context, prepare, context->state().alpha);
}
