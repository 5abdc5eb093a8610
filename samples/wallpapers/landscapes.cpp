// Wallpapers and covers, drawn for this project: ranges of hills under a sky, each in its own
// shade.
#include <cairo.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <numbers>
#include <string>

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

struct Stop {
  double at;
  unsigned rgb;
  double alpha = 1;
};

/// The canvas, in pixels, (0, 0) the upper left corner.
struct Canvas {
  cairo_t* cr;
  double width, height;

  static double part(unsigned rgb, int shift) { return (rgb >> shift & 0xff) / 255.0; }
  void color(unsigned rgb, double alpha = 1) const {
    cairo_set_source_rgba(cr, part(rgb, 16), part(rgb, 8), part(rgb, 0), alpha);
  }
  void use(cairo_pattern_t* pattern, std::initializer_list<Stop> stops) const {
    for (const Stop& stop : stops) {
      cairo_pattern_add_color_stop_rgba(pattern, stop.at, part(stop.rgb, 16), part(stop.rgb, 8),
                                        part(stop.rgb, 0), stop.alpha);
    }
    cairo_set_source(cr, pattern);
    cairo_pattern_destroy(pattern);
  }
  /// Over the whole canvas, from top to bottom.
  void sky(std::initializer_list<Stop> stops) const {
    use(cairo_pattern_create_linear(0, 0, 0, height), stops);
    cairo_paint(cr);
  }
  void glow(double x, double y, double radius, std::initializer_list<Stop> stops) const {
    use(cairo_pattern_create_radial(x, y, 0, x, y, radius), stops);
    cairo_paint(cr);
  }
  void disc(double x, double y, double radius, unsigned rgb, double alpha = 1) const {
    cairo_new_path(cr);
    cairo_arc(cr, x, y, radius, 0, kTurn);
    color(rgb, alpha);
    cairo_fill(cr);
  }
};

/// A range of hills: waves of three lengths, the same in every run.
struct Range {
  double top, roughness;
  double phase;
  unsigned crest, foot;
};

void hills(const Canvas& c, const Range& range) {
  cairo_new_path(c.cr);
  cairo_move_to(c.cr, 0, c.height);
  for (double x = 0; x <= c.width; x += 2) {
    const double t = x / c.width * kTurn;
    const double wave = std::sin(t * 0.8 + range.phase) +
                        0.45 * std::sin(t * 1.9 + range.phase * 2.3) +
                        0.12 * std::sin(t * 5.3 + range.phase * 4.1);
    cairo_line_to(c.cr, x, range.top - range.roughness * wave);
  }
  cairo_line_to(c.cr, c.width, c.height);
  cairo_close_path(c.cr);
  c.use(cairo_pattern_create_linear(0, range.top - 1.5 * range.roughness, 0, c.height),
        {{0, range.crest}, {1, range.foot}});
  cairo_fill(c.cr);
}

class Dice {
 public:
  double roll() {
    state_ = state_ * 1664525 + 1013904223;
    return (state_ >> 8) / 16777216.0;
  }

 private:
  std::uint32_t state_ = 42;
};

void light(const Canvas& c) {
  c.sky({{0, 0x9fd3ee}, {0.35, 0xcfe8f2}, {0.6, 0xfdeedd}, {1, 0xfde3c8}});
  c.glow(560, 560, 520, {{0, 0xfff7e0, 1}, {0.12, 0xfff1cf, 0.9}, {1, 0xffe9c4, 0}});
  c.disc(560, 560, 62, 0xfffdf4);
  hills(c, {720, 46, 0.6, 0xc4dbe0, 0xe6ece4});
  hills(c, {800, 58, 2.4, 0xa3cbd0, 0xd3e4d8});
  hills(c, {900, 52, 4.3, 0x86bcb8, 0xb9d9bf});
  hills(c, {1010, 62, 1.2, 0x74b39b, 0x9fcd9f});
  hills(c, {1140, 50, 3.1, 0x8cc487, 0x6fb08a});
}

void dark(const Canvas& c) {
  c.sky({{0, 0x0b1030}, {0.4, 0x1d2560}, {0.62, 0x5b3a86}, {0.74, 0xb4527f}, {1, 0xd9785f}});
  Dice dice;
  for (int i = 0; i < 170; ++i) {
    const double x = dice.roll() * c.width, y = dice.roll() * c.height * 0.55;
    c.disc(x, y, 0.7 + 1.3 * dice.roll() * dice.roll(), 0xffffff, 0.25 + 0.6 * dice.roll());
  }
  c.glow(220, 890, 560, {{0, 0xffb98a, 0.75}, {0.4, 0xe0708a, 0.35}, {1, 0x8a3f86, 0}});
  hills(c, {840, 66, 5.2, 0x5a3478, 0x703c74});
  hills(c, {930, 74, 1.6, 0x3d2a66, 0x4c2f68});
  hills(c, {1040, 66, 3.7, 0x271f52, 0x2d2352});
  hills(c, {1150, 58, 0.2, 0x161540, 0x14143a});
  hills(c, {1250, 40, 2.2, 0x0c0e2c, 0x090a22});
}

void dusk(const Canvas& c) {
  c.sky({{0, 0x2b1055}, {0.45, 0xc2337a}, {0.72, 0xff7a45}, {1, 0xffb347}});
  c.disc(300, 400, 130, 0xffe08a);
  hills(c, {430, 22, 0.9, 0x7a1f5c, 0x54164f});
  hills(c, {500, 26, 3.3, 0x4a1247, 0x2b0d38});
  cairo_set_line_cap(c.cr, CAIRO_LINE_CAP_ROUND);
  for (int i = 0; i < 5; ++i) {
    const double half = 150 - 22 * i;
    cairo_move_to(c.cr, 300 - half, 300 + i * 26);
    cairo_line_to(c.cr, 300 + half, 300 + i * 26);
    c.color(0xc2337a, 0.18);
    cairo_set_line_width(c.cr, 5);
    cairo_stroke(c.cr);
  }
}

void tides(const Canvas& c) {
  c.sky({{0, 0xe6f6f2}, {1, 0x9fdcd6}});
  constexpr unsigned kShades[] = {0x0e7c86, 0x12929a, 0x19a7a8, 0x37bdb4, 0x6ad2c3};
  for (int i = 0; i < 5; ++i) {
    cairo_new_path(c.cr);
    cairo_arc(c.cr, 120 + 40 * i, 640 - 30 * i, 470 - 80 * i, 0, kTurn);
    c.color(kShades[i]);
    cairo_fill(c.cr);
  }
  c.disc(455, 150, 62, 0xff8f5a);
}

struct Painting {
  const char* file;
  int width, height;
  void (*draw)(const Canvas&);
};

constexpr Painting kPaintings[] = {
    {"wallpapers/light.png", 750, 1334, light},
    {"wallpapers/dark.png", 750, 1334, dark},
    {"covers/dusk.png", 600, 600, dusk},
    {"covers/tides.png", 600, 600, tides},
};

bool paint(const Painting& painting, const std::string& folder) {
  cairo_surface_t* surface =
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, painting.width, painting.height);
  cairo_t* cr = cairo_create(surface);
  painting.draw({cr, static_cast<double>(painting.width), static_cast<double>(painting.height)});
  cairo_destroy(cr);
  const std::string file = folder + "/" + painting.file;
  const cairo_status_t status = cairo_surface_write_to_png(surface, file.c_str());
  cairo_surface_destroy(surface);
  if (status == CAIRO_STATUS_SUCCESS) return true;
  std::fprintf(stderr, "%s: %s\n", file.c_str(), cairo_status_to_string(status));
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  bool isDone = true;
  for (const Painting& painting : kPaintings) isDone = paint(painting, argv[1]) && isDone;
  return isDone ? 0 : 1;
}
