#include "pick/canvas.h"

#include <algorithm>
#include <numbers>
#include <stdexcept>

#include "pick/displayed_text.h"

namespace varnix::cli::pick {

namespace {

constexpr double kQuarter = std::numbers::pi / 2;

// If a family is missing, the system picks a similar font.
constexpr const char* kFamilies[] = {"Inter", "Inter Medium", "Inter SemiBold"};

void check(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

cairo_status_t append(void* file, const unsigned char* bytes, unsigned length) {
  static_cast<std::string*>(file)->append(bytes, bytes + length);
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

Canvas::Canvas(int width, int height)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width * kScale, height * kScale),
               &cairo_surface_destroy),
      context_(cairo_create(surface_.get()), &cairo_destroy) {
  check(cairo_status(context_.get()));
  cairo_scale(context_.get(), kScale, kScale);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(context_.get(), options);
  cairo_font_options_destroy(options);
  fill({0, 0, static_cast<double>(width), static_cast<double>(height)}, {255, 255, 255});
}

void Canvas::use(const Color& color) {
  cairo_set_source_rgba(context_.get(), color.red / 255.0, color.green / 255.0, color.blue / 255.0,
                        color.alpha / 255.0);
}

void Canvas::path(const Box& box, double radius) {
  cairo_t* cr = context_.get();
  cairo_new_path(cr);
  if (radius <= 0) return cairo_rectangle(cr, box.x, box.y, box.width, box.height);
  const double right = box.x + box.width;
  const double bottom = box.y + box.height;
  cairo_arc(cr, right - radius, box.y + radius, radius, -kQuarter, 0);
  cairo_arc(cr, right - radius, bottom - radius, radius, 0, kQuarter);
  cairo_arc(cr, box.x + radius, bottom - radius, radius, kQuarter, 2 * kQuarter);
  cairo_arc(cr, box.x + radius, box.y + radius, radius, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(cr);
}

void Canvas::fill(const Box& box, const Color& color, double radius) {
  path(box, radius);
  use(color);
  cairo_fill(context_.get());
}

void Canvas::outline(const Box& box, const Color& color, double radius, double line) {
  path({box.x + line / 2, box.y + line / 2, box.width - line, box.height - line},
       std::max(radius - line / 2, 0.0));
  use(color);
  cairo_set_line_width(context_.get(), line);
  cairo_stroke(context_.get());
}

void Canvas::shadow(const Box& box, double radius) {
  constexpr int kReach = 12;
  for (int reach = kReach; reach > 0; --reach) {
    fill({box.x - reach, box.y - reach + 4, box.width + 2 * reach, box.height + 2 * reach},
         {20, 24, 40, 1}, radius + reach);
  }
}

void Canvas::dot(double x, double y, double radius, const Color& color) {
  fill({x - radius, y - radius, 2 * radius, 2 * radius}, color, radius);
}

void Canvas::gradient(const Box& box, const std::vector<Color>& stops, double radius) {
  cairo_pattern_t* pattern = cairo_pattern_create_linear(box.x, 0, box.x + box.width, 0);
  for (std::size_t i = 0; i < stops.size(); ++i) {
    cairo_pattern_add_color_stop_rgb(
        pattern, static_cast<double>(i) / static_cast<double>(stops.size() - 1),
        stops[i].red / 255.0, stops[i].green / 255.0, stops[i].blue / 255.0);
  }
  path(box, radius);
  cairo_set_source(context_.get(), pattern);
  cairo_fill(context_.get());
  cairo_pattern_destroy(pattern);
}

void Canvas::image(const Pixels& pixels, const Box& box, bool isSmooth) {
  // Only read, though cairo asks for writable memory.
  auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(pixels.argb.data()));
  cairo_surface_t* source = cairo_image_surface_create_for_data(
      bytes, CAIRO_FORMAT_ARGB32, static_cast<int>(pixels.width), static_cast<int>(pixels.height),
      static_cast<int>(pixels.width * 4));
  cairo_t* cr = context_.get();
  cairo_save(cr);
  path(box, 0);
  cairo_clip(cr);
  cairo_translate(cr, box.x, box.y);
  cairo_scale(cr, box.width / pixels.width, box.height / pixels.height);
  cairo_set_source_surface(cr, source, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(cr),
                           isSmooth ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
  cairo_paint(cr);
  cairo_restore(cr);
  cairo_surface_destroy(source);
}

void Canvas::checkerboard(const Box& box) {
  constexpr double kSquare = 8;
  fill(box, {255, 255, 255});
  clip(box, 0);
  bool isOddRow = false;
  for (double y = 0; y < box.height; y += kSquare, isOddRow = !isOddRow) {
    for (double x = isOddRow ? kSquare : 0; x < box.width; x += 2 * kSquare) {
      fill({box.x + x, box.y + y, kSquare, kSquare}, {232, 233, 238});
    }
  }
  restore();
}

void Canvas::clip(const Box& box, double radius) {
  cairo_save(context_.get());
  path(box, radius);
  cairo_clip(context_.get());
}

void Canvas::restore() { cairo_restore(context_.get()); }

double Canvas::widthOf(const std::string& text) const {
  cairo_text_extents_t extents;
  cairo_text_extents(context_.get(), text.c_str(), &extents);
  return extents.x_advance;
}

void Canvas::text(double x, double baseline, std::string_view given, const TextStyle& style,
                  double width) {
  cairo_t* cr = context_.get();
  cairo_select_font_face(cr, kFamilies[static_cast<int>(style.weight)], CAIRO_FONT_SLANT_NORMAL,
                         CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cr, style.size);
  std::string shown = displayedText(given);
  if (width > 0) {
    shown = shortenedInTheMiddle(
        shown, [&](const std::string& candidate) { return widthOf(candidate) <= width; });
  }
  const double part = style.align == Align::right ? 1 : style.align == Align::center ? 0.5 : 0;
  cairo_move_to(cr, x - part * widthOf(shown), baseline);
  use(style.color);
  cairo_show_text(cr, shown.c_str());
}

std::string Canvas::png() const {
  check(cairo_status(context_.get()));
  std::string file;
  check(cairo_surface_write_to_png_stream(surface_.get(), &append, &file));
  return file;
}

}  // namespace varnix::cli::pick
