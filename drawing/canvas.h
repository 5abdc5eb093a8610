// A screen to draw on, in points; (0, 0) is its upper left corner.
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
  double down;   ///< how far below the shape
  double blur;   ///< twice the standard deviation
  double alpha;  ///< of black
};

class Canvas {
 public:
  /// Opaque black. Throws std::runtime_error where there is no memory for it.
  Canvas(double width, double height, double scale);

  double width() const { return width_; }
  double height() const { return height_; }
  double scale() const { return scale_; }
  /// A point's part that is one pixel.
  double hairline() const { return 1 / scale_; }
  cairo_t* context() const { return context_.get(); }
  const Surface& surface() const { return surface_; }

  // Paths, for fill and stroke below.
  void rectangle(const Box& box, double radius = 0) const;
  /// Corners that bend like an icon's: the curve begins gently.
  void squircle(const Box& box) const;
  void circle(Point middle, double radius) const;
  void line(std::initializer_list<Point> points) const;
  void close() const;

  void use(const Color& color) const;
  /// Fills the path that was begun and forgets it.
  void fill(const Color& color) const;
  /// Round ends and corners.
  void stroke(const Color& color, double lineWidth) const;
  /// From the top of the box to its bottom.
  void fillGradient(const Box& box, const std::vector<Color>& colors) const;
  void fill(const Box& box, const Color& color, double radius = 0) const;
  /// The line lies inside the box.
  void outline(const Box& box, const Color& color, double lineWidth, double radius = 0) const;
  void disc(Point middle, double radius, const Color& color) const;

  /// A soft shadow of the box, which is still to be filled.
  void shadow(const Box& box, double radius, const Shadow& shadow) const;

  /// Stretched to the box, cut to the radius.
  void picture(const Surface& picture, const Box& box, double radius = 0) const;
  /// The same, cut as an icon is.
  void icon(const Surface& picture, const Box& box) const;
  /// Scaled to cover the box, its middle in the box's.
  void cover(const Surface& picture, const Box& box) const;

  /// Cuts what is drawn until restore to the path that was begun.
  void clip() const;
  void save() const;
  void restore() const;

  /// What has been drawn, as it is now.
  Surface copy() const;

 private:
  /// The same measures, drawing elsewhere.
  Canvas(const Canvas& other, std::shared_ptr<cairo_t> context)
      : width_(other.width_),
        height_(other.height_),
        scale_(other.scale_),
        surface_(other.surface_),
        context_(std::move(context)) {}

  Surface shadowShape(Pixels size, double radius, double blur) const;

  double width_, height_, scale_;
  Surface surface_;
  std::shared_ptr<cairo_t> context_;
};

}  // namespace varnix::drawing
