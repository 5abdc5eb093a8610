// A page to draw on, in points; a point is two pixels.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <cairo.h>

#include "pick/analysis.h"

namespace varnix::cli::pick {

struct Box {
  double x, y, width, height;
};

enum class Weight { regular, medium, semibold };
enum class Align { left, right, center };

struct TextStyle {
  double size;
  Weight weight = Weight::regular;
  Color color = {};
  Align align = Align::left;
};

class Canvas {
 public:
  static constexpr int kScale = 2;
  /// The rasteriser's limit, in points.
  static constexpr int kMaximumHeight = 32767 / kScale;

  /// Opaque white. Throws std::runtime_error if there is no memory for it.
  Canvas(int width, int height);

  void fill(const Box& box, const Color& color, double radius = 0);
  /// The line is drawn inside the box.
  void outline(const Box& box, const Color& color, double radius = 0, double line = 1);
  /// A soft shadow under a box that is filled afterwards.
  void shadow(const Box& box, double radius);
  void dot(double x, double y, double radius, const Color& color);
  /// From left to right.
  void gradient(const Box& box, const std::vector<Color>& stops, double radius);
  /// Stretched to the box: smooth, or with each pixel a sharp square.
  void image(const Pixels& pixels, const Box& box, bool isSmooth);
  /// Light squares, so that transparency can be seen.
  void checkerboard(const Box& box);
  /// Until restore(), only what is inside the box is drawn.
  void clip(const Box& box, double radius);
  void restore();

  /// One line from its baseline on. If a width is given, the line's middle is shortened to fit.
  void text(double x, double baseline, std::string_view text, const TextStyle& style,
            double width = 0);

  /// The page as a PNG file. Throws std::runtime_error.
  std::string png() const;

 private:
  void path(const Box& box, double radius);
  void use(const Color& color);
  double widthOf(const std::string& text) const;

  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
  std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context_;
};

}  // namespace varnix::cli::pick
