#include "drawing/ink.h"

#include <cmath>
#include <memory>
#include <utility>

#include "drawing/pixel_row.h"

namespace varnix::drawing {

namespace {

constexpr double kLeastCoverage = 0.5;
/// Of the pixels beside a word only some are noted.
constexpr int kBesideStep = 3;

}  // namespace

Ink::Ink(const Canvas& canvas, const Box& box, const Color& color, InkKind kind)
    : canvas_(canvas), color_(color), kind_(kind) {
  const Inks* inks = canvas.inks();
  isNoted_ = inks != nullptr && !inks->isInactive_ && color.alpha > 0 &&
             (color.dyes != nullptr || !inks->below_.empty());
  if (!isNoted_) return;
  canvas.save();
  cairo_t* cr = canvas.context();
  cairo_new_path(cr);
  const Box more = box.inset(-1);
  cairo_rectangle(cr, more.x, more.y, more.width, more.height);
  cairo_clip(cr);
  cairo_push_group_with_content(cr, CAIRO_CONTENT_COLOR_ALPHA);
}

Ink::~Ink() {
  if (!isNoted_) return;
  cairo_t* cr = canvas_.context();
  const std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)> drawn(
      cairo_pop_group(cr), &cairo_pattern_destroy);
  cairo_surface_t *group = nullptr, *target = canvas_.surface().get();
  if (cairo_pattern_get_surface(drawn.get(), &group) != CAIRO_STATUS_SUCCESS) group = nullptr;
  Inks::Noted noted{canvas_.inks()->below_, color_, kind_, {}, {}};
  if (color_.dyes != nullptr) noted.surfaces.push_back(color_.dyes);
  if (group != nullptr && cairo_surface_get_type(group) == CAIRO_SURFACE_TYPE_IMAGE) {
    double left = 0, top = 0;
    cairo_surface_get_device_offset(group, &left, &top);
    cairo_surface_flush(group);
    cairo_surface_flush(target);
    const int x0 = -static_cast<int>(std::lround(left)), y0 = -static_cast<int>(std::lround(top));
    const double least = 255 * color_.alpha * kLeastCoverage;
    for (int y = 0; y < cairo_image_surface_get_height(group); ++y) {
      const int to = y0 + y;
      if (to < 0 || to >= cairo_image_surface_get_height(target)) continue;
      const std::uint32_t *ink = pixelRow(group, y), *ground = pixelRow(target, to);
      for (int x = 0; x < cairo_image_surface_get_width(group); ++x) {
        const int at = x0 + x;
        if (at < 0 || at >= cairo_image_surface_get_width(target)) continue;
        const Inks::Pixel pixel{at, to, ground[at] & 0xffffff, ground[at] & 0xffffff};
        if (ink[x] >> 24 >= least) noted.pixels.push_back(pixel);
        else if (ink[x] == 0 && (x + y) % kBesideStep == 0) noted.beside.push_back(pixel);
      }
    }
  }
  cairo_set_source(cr, drawn.get());
  cairo_paint(cr);
  cairo_surface_flush(target);
  for (Inks::Pixel& pixel : noted.pixels)
    pixel.laid = pixelRow(target, pixel.y)[pixel.x] & 0xffffff;
  canvas_.restore();
  canvas_.inks()->noted_.push_back(std::move(noted));
}

On::On(const Canvas& canvas, const char* surface) : inks_(canvas.inks()) {
  if (inks_ != nullptr) inks_->below_.push_back(surface);
}

On::~On() {
  if (inks_ != nullptr) inks_->below_.pop_back();
}

Inactive::Inactive(const Canvas& canvas) : inks_(canvas.inks()) {
  if (inks_ != nullptr) inks_->isInactive_ = true;
}

Inactive::~Inactive() {
  if (inks_ != nullptr) inks_->isInactive_ = false;
}

}  // namespace varnix::drawing
