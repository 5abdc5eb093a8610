#include "drawing/canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <stdexcept>

#include "drawing/blur.h"

namespace varnix::drawing {

namespace {

constexpr double kQuarter = std::numbers::pi / 2;
/// How far the shadow reaches beyond the shape, as a multiple of its blur.
constexpr double kShadowReach = 1.6;

int pixels(double points, double scale) { return static_cast<int>(std::lround(points * scale)); }

}  // namespace

Canvas::Canvas(double width, double height, double scale)
    : width_(width),
      height_(height),
      scale_(scale),
      surface_(makeSurface(pixels(width, scale), pixels(height, scale), CAIRO_FORMAT_RGB24)),
      context_(cairo_create(surface_.get()), &cairo_destroy) {
  const cairo_status_t status = cairo_status(context_.get());
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
  cairo_scale(context_.get(), scale, scale);
  cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(context_.get(), CAIRO_LINE_CAP_ROUND);
}

void Canvas::rectangle(const Box& box, double radius) const {
  cairo_t* cr = context();
  radius = std::min({radius, box.width / 2, box.height / 2});
  if (radius <= 0) return cairo_rectangle(cr, box.x, box.y, box.width, box.height);
  cairo_new_sub_path(cr);
  cairo_arc(cr, box.right() - radius, box.y + radius, radius, -kQuarter, 0);
  cairo_arc(cr, box.right() - radius, box.bottom() - radius, radius, 0, kQuarter);
  cairo_arc(cr, box.x + radius, box.bottom() - radius, radius, kQuarter, 2 * kQuarter);
  cairo_arc(cr, box.x + radius, box.y + radius, radius, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(cr);
}

// A superellipse.
void Canvas::squircle(const Box& box) const {
  constexpr double kExponent = 5;
  constexpr int kPoints = 240;
  auto coordinate = [](double middle, double half, double wave) {
    return middle + half * std::copysign(std::pow(std::abs(wave), 2 / kExponent), wave);
  };
  cairo_new_sub_path(context());
  for (int i = 0; i < kPoints; ++i) {
    const double angle = i * 4 * kQuarter / kPoints;
    cairo_line_to(context(), coordinate(box.middleX(), box.width / 2, std::cos(angle)),
                  coordinate(box.middleY(), box.height / 2, std::sin(angle)));
  }
  cairo_close_path(context());
}

void Canvas::circle(Point middle, double radius) const {
  cairo_new_sub_path(context());
  cairo_arc(context(), middle.x, middle.y, radius, 0, 4 * kQuarter);
  cairo_close_path(context());
}

void Canvas::line(std::initializer_list<Point> points) const {
  cairo_new_sub_path(context());
  for (const Point& point : points) cairo_line_to(context(), point.x, point.y);
}

void Canvas::close() const { cairo_close_path(context()); }

void Canvas::use(const Color& color) const {
  cairo_set_source_rgba(context(), color.red, color.green, color.blue, color.alpha);
}

void Canvas::fill(const Color& color) const {
  use(color);
  cairo_fill(context());
}

void Canvas::stroke(const Color& color, double lineWidth) const {
  use(color);
  cairo_set_line_width(context(), lineWidth);
  cairo_stroke(context());
}

void Canvas::fillGradient(Point from, Point to, const std::vector<Color>& colors) const {
  cairo_pattern_t* pattern = cairo_pattern_create_linear(from.x, from.y, to.x, to.y);
  const auto steps = std::max<std::size_t>(colors.size() - 1, 1);
  for (std::size_t i = 0; i < colors.size(); ++i) {
    const Color& color = colors[i];
    cairo_pattern_add_color_stop_rgba(pattern, static_cast<double>(i) / static_cast<double>(steps),
                                      color.red, color.green, color.blue, color.alpha);
  }
  cairo_set_source(context(), pattern);
  cairo_fill(context());
  cairo_pattern_destroy(pattern);
}

void Canvas::fill(const Box& box, const Color& color, double radius) const {
  rectangle(box, radius);
  fill(color);
}

void Canvas::outline(const Box& box, const Color& color, double lineWidth, double radius) const {
  rectangle(box.inset(lineWidth / 2), std::max(radius - lineWidth / 2, 0.0));
  stroke(color, lineWidth);
}

void Canvas::disc(Point middle, double radius, const Color& color) const {
  circle(middle, radius);
  fill(color);
}

Surface Canvas::shadowShape(Pixels size, double radius, double blur) const {
  using Key = std::array<double, 5>;
  // A screen has only a few shadow shapes, each used many times.
  thread_local std::map<Key, Surface> known;
  Surface& kept = known[{scale_, static_cast<double>(size.width), static_cast<double>(size.height),
                         radius, blur}];
  if (kept) return kept;
  const double margin = kShadowReach * blur;
  const Surface shape = makeSurface(size.width, size.height, CAIRO_FORMAT_A8);
  cairo_surface_set_device_scale(shape.get(), scale_, scale_);
  const Canvas borrowed(*this, std::shared_ptr<cairo_t>(cairo_create(shape.get()), &cairo_destroy));
  borrowed.fill(
      {margin, margin, size.width / scale_ - 2 * margin, size.height / scale_ - 2 * margin}, kBlack,
      radius);
  kept = blurredShape(shape, blur / 2 * scale_);
  cairo_surface_set_device_scale(kept.get(), scale_, scale_);
  return kept;
}

void Canvas::shadow(const Box& box, double radius, const Shadow& shadow) const {
  const double margin = kShadowReach * shadow.blur;
  const Box place{box.x - margin, box.y + shadow.down - margin, box.width + 2 * margin,
                  box.height + 2 * margin};
  const Surface soft =
      shadowShape({pixels(place.width, scale_), pixels(place.height, scale_)}, radius, shadow.blur);
  use(kBlack.withAlpha(shadow.alpha));
  cairo_mask_surface(context(), soft.get(), place.x, place.y);
}

void Canvas::stretch(const Surface& picture, const Box& box, double radius,
                     cairo_filter_t filter) const {
  saveWithin(box, radius);
  cairo_translate(context(), box.x, box.y);
  cairo_scale(context(), box.width / widthOf(picture), box.height / heightOf(picture));
  cairo_set_source_surface(context(), picture.get(), 0, 0);
  cairo_pattern_set_extend(cairo_get_source(context()), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(context()), filter);
  cairo_paint(context());
  restore();
}

void Canvas::picture(const Surface& picture, const Box& box, double radius) const {
  stretch(picture, box, radius, CAIRO_FILTER_GOOD);
}

void Canvas::sharpPicture(const Surface& picture, const Box& box) const {
  stretch(picture, box, 0, CAIRO_FILTER_NEAREST);
}

void Canvas::icon(const Surface& picture, const Box& box) const {
  save();
  squircle(box);
  clip();
  this->picture(picture, box);
  restore();
}

void Canvas::cover(const Surface& picture, const Box& box) const {
  const double factor = std::max(box.width / widthOf(picture), box.height / heightOf(picture));
  saveWithin(box);
  const Point middle{box.middleX(), box.middleY()};
  this->picture(picture, around(middle, widthOf(picture) * factor, heightOf(picture) * factor));
  restore();
}

void Canvas::clip() const { cairo_clip(context()); }
void Canvas::save() const { cairo_save(context()); }
void Canvas::saveWithin(const Box& box, double radius) const {
  save();
  rectangle(box, radius);
  clip();
}
void Canvas::restore() const { cairo_restore(context()); }

Surface Canvas::copy() const {
  Surface target = makeSurface(widthOf(surface_), heightOf(surface_), CAIRO_FORMAT_RGB24);
  cairo_t* cr = cairo_create(target.get());
  cairo_set_source_surface(cr, surface_.get(), 0, 0);
  cairo_paint(cr);
  cairo_destroy(cr);
  return target;
}

}  // namespace varnix::drawing
