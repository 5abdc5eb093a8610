#include "drawing/blur.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <vector>

#include <pixman.h>

namespace varnix::drawing {

namespace {

using Image = std::unique_ptr<pixman_image_t, decltype(&pixman_image_unref)>;

/// The working standard deviation, in pixels of the shrunk picture: small enough to be quick, and
/// large enough to hide the steps between pixels.
constexpr double kWorkingSigma = 5;

std::vector<pixman_fixed_t> weights(double sigma) {
  const int reach = std::max(static_cast<int>(std::ceil(3 * sigma)), 1);
  std::vector<double> curve;
  double sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    curve.push_back(std::exp(-i * i / (2 * sigma * sigma)));
    sum += curve.back();
  }
  std::vector<pixman_fixed_t> fixed;
  pixman_fixed_t total = 0;
  for (double weight : curve) {
    fixed.push_back(static_cast<pixman_fixed_t>(std::lround(weight / sum * pixman_fixed_1)));
    total += fixed.back();
  }
  // The centre takes the rounding errors, so that the picture becomes neither darker nor brighter.
  fixed[static_cast<std::size_t>(reach)] += pixman_fixed_1 - total;
  return fixed;
}

pixman_format_code_t formatOf(const Surface& surface) {
  switch (cairo_image_surface_get_format(surface.get())) {
    case CAIRO_FORMAT_A8:
      return PIXMAN_a8;
    case CAIRO_FORMAT_RGB24:
      return PIXMAN_x8r8g8b8;
    default:
      return PIXMAN_a8r8g8b8;
  }
}

Image wrap(const Surface& surface) {
  cairo_surface_flush(surface.get());
  Image image(pixman_image_create_bits(
                  formatOf(surface), widthOf(surface), heightOf(surface),
                  reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface.get())),
                  cairo_image_surface_get_stride(surface.get())),
              &pixman_image_unref);
  if (image == nullptr) throw std::runtime_error("out of memory");
  return image;
}

enum class Direction { horizontal, vertical };

Surface pass(const Surface& source, const std::vector<pixman_fixed_t>& curve, Direction direction,
             pixman_repeat_t beyond) {
  const auto length = pixman_int_to_fixed(static_cast<int>(curve.size()));
  const bool isHorizontal = direction == Direction::horizontal;
  // The filter's width and height, no steps between pixels, and a single weight in the other
  // direction.
  std::vector<pixman_fixed_t> filter = {isHorizontal ? length : pixman_fixed_1,
                                        isHorizontal ? pixman_fixed_1 : length, 0, 0};
  if (!isHorizontal) filter.push_back(pixman_fixed_1);
  filter.insert(filter.end(), curve.begin(), curve.end());
  if (isHorizontal) filter.push_back(pixman_fixed_1);

  Surface target =
      makeSurface(widthOf(source), heightOf(source), cairo_image_surface_get_format(source.get()));
  const Image from = wrap(source);
  const Image to = wrap(target);
  pixman_image_set_repeat(from.get(), beyond);
  if (!pixman_image_set_filter(from.get(), PIXMAN_FILTER_SEPARABLE_CONVOLUTION, filter.data(),
                               static_cast<int>(filter.size())))
    throw std::runtime_error("out of memory");
  pixman_image_composite32(PIXMAN_OP_SRC, from.get(), nullptr, to.get(), 0, 0, 0, 0, 0, 0,
                           widthOf(source), heightOf(source));
  cairo_surface_mark_dirty(target.get());
  return target;
}

Surface convolved(const Surface& source, double sigma, pixman_repeat_t beyond) {
  const auto curve = weights(sigma);
  return pass(pass(source, curve, Direction::horizontal, beyond), curve, Direction::vertical,
              beyond);
}

Surface shrunkBy(const Surface& source, double factor) {
  return shrunk(source, static_cast<int>(std::lround(widthOf(source) / factor)),
                static_cast<int>(std::lround(heightOf(source) / factor)));
}

}  // namespace

Surface blurred(const Surface& source, double sigma) {
  const double factor = std::clamp(sigma / kWorkingSigma, 1.0, 8.0);
  return convolved(factor > 1 ? shrunkBy(source, factor) : source, sigma / factor,
                   PIXMAN_REPEAT_PAD);
}

Surface blurredShape(const Surface& shape, double sigma) {
  return convolved(shape, sigma, PIXMAN_REPEAT_NONE);
}

void saturate(const Surface& surface, double factor) {
  cairo_surface_flush(surface.get());
  unsigned char* rows = cairo_image_surface_get_data(surface.get());
  for (int y = 0; y < heightOf(surface); ++y) {
    auto* row = reinterpret_cast<std::uint32_t*>(
        rows + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface.get()));
    for (int x = 0; x < widthOf(surface); ++x) {
      const Color color = saturated(rgb(row[x] & 0xffffff), factor);
      auto byte = [](double part) { return static_cast<std::uint32_t>(std::lround(part * 255)); };
      row[x] =
          (row[x] & 0xff000000) | byte(color.red) << 16 | byte(color.green) << 8 | byte(color.blue);
    }
  }
  cairo_surface_mark_dirty(surface.get());
}

}  // namespace varnix::drawing
