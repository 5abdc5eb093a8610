// A canvas for icons, 180 pixels a side, and the program that writes them.
#pragma once

#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <numbers>
#include <span>
#include <string>

namespace icons {

inline constexpr double kSide = 180;
inline constexpr double kTurn = 2 * std::numbers::pi;

struct Stop {
  double at;
  unsigned rgb;
  double alpha = 1;
};

/// The canvas, in pixels, (0, 0) the upper left corner.
class Canvas {
 public:
  explicit Canvas(cairo_t* target) : cr(target) {}

  void color(unsigned rgb, double alpha = 1) const {
    cairo_set_source_rgba(cr, part(rgb, 16), part(rgb, 8), part(rgb, 0), alpha);
  }
  void paint(unsigned rgb) const {
    color(rgb);
    cairo_paint(cr);
  }
  /// Linear along the line.
  void gradient(double x0, double y0, double x1, double y1,
                std::initializer_list<Stop> stops) const {
    use(cairo_pattern_create_linear(x0, y0, x1, y1), stops);
  }
  void glow(double x, double y, double radius, std::initializer_list<Stop> stops) const {
    use(cairo_pattern_create_radial(x, y, 0, x, y, radius), stops);
  }
  void background(std::initializer_list<Stop> stops) const {
    gradient(0, 0, 0, kSide, stops);
    cairo_paint(cr);
  }

  void circle(double x, double y, double radius) const {
    cairo_new_sub_path(cr);
    cairo_arc(cr, x, y, radius, 0, kTurn);
  }
  void box(double x, double y, double width, double height, double radius) const {
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + width - radius, y + radius, radius, -kTurn / 4, 0);
    cairo_arc(cr, x + width - radius, y + height - radius, radius, 0, kTurn / 4);
    cairo_arc(cr, x + radius, y + height - radius, radius, kTurn / 4, kTurn / 2);
    cairo_arc(cr, x + radius, y + radius, radius, kTurn / 2, kTurn * 3 / 4);
    cairo_close_path(cr);
  }
  void line(std::initializer_list<std::pair<double, double>> points) const {
    cairo_new_sub_path(cr);
    for (auto [x, y] : points) cairo_line_to(cr, x, y);
  }
  void fill(unsigned rgb, double alpha = 1) const {
    color(rgb, alpha);
    cairo_fill(cr);
  }
  void stroke(double width, unsigned rgb, double alpha = 1) const {
    color(rgb, alpha);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
  }

  cairo_t* cr;

 private:
  static double part(unsigned rgb, int shift) { return (rgb >> shift & 0xff) / 255.0; }
  void use(cairo_pattern_t* pattern, std::initializer_list<Stop> stops) const {
    for (const Stop& stop : stops) {
      cairo_pattern_add_color_stop_rgba(pattern, stop.at, part(stop.rgb, 16), part(stop.rgb, 8),
                                        part(stop.rgb, 0), stop.alpha);
    }
    cairo_set_source(cr, pattern);
    cairo_pattern_destroy(pattern);
  }
};

struct Icon {
  const char* file;
  void (*draw)(const Canvas&);
};

/// A superellipse: its corners take about 22 % of a side, and the curve begins gently everywhere.
inline void outline(cairo_t* cr) {
  constexpr double kExponent = 5;
  constexpr int kPoints = 720;
  auto coordinate = [](double wave) {
    return kSide / 2 * (1 + std::copysign(std::pow(std::abs(wave), 2 / kExponent), wave));
  };
  for (int i = 0; i < kPoints; ++i) {
    const double angle = i * kTurn / kPoints;
    cairo_line_to(cr, coordinate(std::cos(angle)), coordinate(std::sin(angle)));
  }
  cairo_close_path(cr);
}

inline bool draw(const Icon& icon, const std::string& folder) {
  constexpr int kPixels = static_cast<int>(kSide);
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kPixels, kPixels);
  cairo_t* cr = cairo_create(surface);
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  cairo_push_group(cr);
  icon.draw(Canvas(cr));
  cairo_pop_group_to_source(cr);
  outline(cr);
  cairo_fill(cr);
  cairo_destroy(cr);
  const std::string file = folder + "/" + icon.file + ".png";
  const cairo_status_t status = cairo_surface_write_to_png(surface, file.c_str());
  cairo_surface_destroy(surface);
  if (status == CAIRO_STATUS_SUCCESS) return true;
  std::fprintf(stderr, "%s: %s\n", file.c_str(), cairo_status_to_string(status));
  return false;
}

/// Writes all icons into the folder that is the program's only argument.
inline int drawAll(std::span<const Icon> all, int argc, char** argv) {
  if (argc != 2) return 2;
  bool isDone = true;
  for (const Icon& icon : all) isDone = draw(icon, argv[1]) && isDone;
  return isDone ? 0 : 1;
}

}  // namespace icons
