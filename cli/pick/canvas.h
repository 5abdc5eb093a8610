// A page to draw on, in points of two pixels.
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
  /// What the rasteriser takes, in points.
  static constexpr int kMaximumHeight = 32767 / kScale;

  /// Opaque white. Throws std::runtime_error where there is no memory for it.
  Canvas(int width, int height);

  void fill(const Box& box, const Color& color, double radius = 0);
  /// The line lies inside the box.
  void outline(const Box& box, const Color& color, double radius = 0, double line = 1);
  /// A soft shadow below a box that is still to be filled.
  void shadow(const Box& box, double radius);
  void dot(double x, double y, double radius, const Color& color);
  /// From left to right.
  void gradient(const Box& box, const std::vector<Color>& stops, double radius);
  /// Stretched to the box; smooth, or with every pixel a hard square.
  void image(const Pixels& pixels, const Box& box, bool isSmooth);
  /// Light squares, for what lies on them to be seen as transparent.
  void checkerboard(const Box& box);
  /// Cuts what is drawn until the next restore to the box.
  void clip(const Box& box, double radius);
  void restore();

  /// One line from its base line on, shortened in its middle to the width where that is given.
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
