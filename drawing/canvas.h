// A screen to draw on, in points; (0, 0) is the upper left corner.
#pragma once

#include <initializer_list>
#include <memory>
#include <numbers>
#include <vector>

#include <cairo.h>

#include "drawing/color.h"
#include "drawing/picture.h"

namespace varnix::drawing {

/// A whole turn, in radians.
inline constexpr double kTurn = 2 * std::numbers::pi;

struct Point {
  double x, y;
};

struct Box {
  double x, y, width, height;

  constexpr double right() const { return x + width; }
  constexpr double bottom() const { return y + height; }
  constexpr double middleX() const { return x + width / 2; }
  constexpr double middleY() const { return y + height / 2; }
  constexpr Box inset(double by) const { return {x + by, y + by, width - 2 * by, height - 2 * by}; }
};

constexpr Box around(Point middle, double width, double height) {
  return {middle.x - width / 2, middle.y - height / 2, width, height};
}

struct Shadow {
  double down;   ///< how far below the shape it is
  double blur;   ///< twice the standard deviation
  double alpha;  ///< how opaque its black is
};

class Canvas {
 public:
  /// Opaque black. Throws std::runtime_error if there is no memory for it.
  Canvas(double width, double height, double scale);

  double width() const { return width_; }
  double height() const { return height_; }
  double scale() const { return scale_; }
  /// The width of one pixel, in points.
  double hairline() const { return 1 / scale_; }
  cairo_t* context() const { return context_.get(); }
  const Surface& surface() const { return surface_; }

  // These make paths for fill and stroke below.
  void rectangle(const Box& box, double radius = 0) const;
  /// With corners like an icon's, whose curve begins gently.
  void squircle(const Box& box) const;
  void circle(Point middle, double radius) const;
  void line(std::initializer_list<Point> points) const;
  void close() const;

  void use(const Color& color) const;
  /// Fills the path and clears it.
  void fill(const Color& color) const;
  /// With round ends and corners.
  void stroke(const Color& color, double lineWidth) const;
  /// The colours go from one point to the other.
  void fillGradient(Point from, Point to, const std::vector<Color>& colors) const;
  void fill(const Box& box, const Color& color, double radius = 0) const;
  /// The line is drawn inside the box.
  void outline(const Box& box, const Color& color, double lineWidth, double radius = 0) const;
  void disc(Point middle, double radius, const Color& color) const;

  /// A soft shadow of the box. Fill the box afterwards.
  void shadow(const Box& box, double radius, const Shadow& shadow) const;

  /// Stretched to the box, and clipped to the radius.
  void picture(const Surface& picture, const Box& box, double radius = 0) const;
  /// Stretched to the box, each pixel a sharp square.
  void sharpPicture(const Surface& picture, const Box& box) const;
  /// The same, clipped to an icon's shape.
  void icon(const Surface& picture, const Box& box) const;
  /// Scaled to cover the box, and centred in it.
  void cover(const Surface& picture, const Box& box) const;

  /// Until restore(), only what is inside the path is drawn.
  void clip() const;
  void save() const;
  /// Saves, and clips to the box.
  void saveWithin(const Box& box, double radius = 0) const;
  void restore() const;

  /// A copy of what has been drawn so far.
  Surface copy() const;

 private:
  /// The same size and scale, but drawing elsewhere.
  Canvas(const Canvas& other, std::shared_ptr<cairo_t> context)
      : width_(other.width_),
        height_(other.height_),
        scale_(other.scale_),
        surface_(other.surface_),
        context_(std::move(context)) {}

  void stretch(const Surface& picture, const Box& box, double radius, cairo_filter_t filter) const;
  Surface shadowShape(Pixels size, double radius, double blur) const;

  double width_, height_, scale_;
  Surface surface_;
  std::shared_ptr<cairo_t> context_;
};

}  // namespace varnix::drawing
