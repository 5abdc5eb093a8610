// A recoloured image, compared with the drawing library's own masked fill of that size.
#include <cairo.h>

#include "color/RecolorImage.h"
#include "measures.h"
#include "objc/autorelease_pool.h"
#include "pixels.h"
#include "table.h"
#include "timing.h"

namespace bench {

namespace {

/// Every pixel is half covered.
cairo_surface_t* coveredSurface(int side) {
  constexpr double kHalf = 0.5;
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side);
  cairo_t* cairo = cairo_create(surface);
  cairo_set_source_rgba(cairo, 0, 0, 0, kHalf);
  cairo_paint(cairo);
  cairo_destroy(cairo);
  return surface;
}

}  // namespace

void measureRecolor() {
  constexpr int kSide = 120;
  const Pixels pixels = generatedPixels(kSide, kSide);
  const auto image = imageOver(pixels);
  cairo_surface_t* mask = coveredSurface(kSide);
  auto bare = [&] {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
    cairo_t* cairo = cairo_create(surface);
    cairo_set_source_rgba(cairo, 1, 0.5, 0, 1);
    cairo_mask_surface(cairo, mask, 0, 0);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
  };
  const objc::AutoreleasePool pool;
  UIColor* color = UIColor::colorWithRed(1, CGFloat(0.5), 0, 1);
  auto ours = [&] {
    const objc::AutoreleasePool inner;
    varnix::Color::RecolorImage(image, color);
  };
  report("recoloured 120 x 120 image, in masked fills",
         bestOf(200, 20, ours) / bestOf(200, 20, bare), Goal::atMost(3));
  cairo_surface_destroy(mask);
}

}  // namespace bench
