#include "drawing/text.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <pango/pangocairo.h>

namespace varnix::drawing {

namespace {

using Layout = std::unique_ptr<PangoLayout, decltype(&g_object_unref)>;

/// From this size on, the headline face is used, whose letters are closer together.
constexpr double kHeadline = 20;

constexpr PangoWeight kWeights[] = {PANGO_WEIGHT_LIGHT, PANGO_WEIGHT_NORMAL, PANGO_WEIGHT_MEDIUM,
                                    PANGO_WEIGHT_SEMIBOLD, PANGO_WEIGHT_BOLD};

int units(double points) { return static_cast<int>(std::lround(points * PANGO_SCALE)); }
double points(int units) { return static_cast<double>(units) / PANGO_SCALE; }

PangoWeight pangoWeight(Weight weight) { return kWeights[static_cast<int>(weight)]; }

Layout makeLayout(const Canvas& canvas, double size, Weight weight, Face face = Face::system) {
  Layout layout(pango_cairo_create_layout(canvas.context()), &g_object_unref);
  // A letter has the same shape everywhere, so nothing is moved to whole pixels.
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  PangoContext* context = pango_layout_get_context(layout.get());
  pango_cairo_context_set_font_options(context, options);
  pango_context_set_round_glyph_positions(context, FALSE);
  cairo_font_options_destroy(options);
  pango_layout_context_changed(layout.get());

  PangoFontDescription* font = pango_font_description_new();
  const bool isHeadline = face == Face::system && size >= kHeadline;
  pango_font_description_set_family(font, isHeadline ? "Inter Display" : "Inter");
  pango_font_description_set_weight(font, pangoWeight(weight));
  pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
  pango_layout_set_font_description(layout.get(), font);
  pango_font_description_free(font);
  return layout;
}

/// The face is a little wider than the system's, which it stands for, mostly at reading sizes.
double spacing(double size, Face face = Face::system) {
  if (face == Face::plain) return 0;
  if (size >= kHeadline) return -0.004 * size;
  return size >= 15 ? -0.022 * size : -0.01 * size;
}

void add(PangoAttrList* list, PangoAttribute* attribute, std::size_t from, std::size_t to) {
  attribute->start_index = static_cast<guint>(from);
  attribute->end_index = static_cast<guint>(to);
  pango_attr_list_insert(list, attribute);
}

guint16 wide(double part) { return static_cast<guint16>(std::lround(part * 65535)); }

Layout lineLayout(const Canvas& canvas, const std::string& text, const TextStyle& style) {
  Layout layout = makeLayout(canvas, style.size, style.weight, style.face);
  PangoAttrList* attributes = pango_attr_list_new();
  pango_attr_list_insert(attributes,
                         pango_attr_letter_spacing_new(units(spacing(style.size, style.face))));
  pango_layout_set_attributes(layout.get(), attributes);
  pango_attr_list_unref(attributes);
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
  return layout;
}

double widthOf(const Layout& layout) {
  int width = 0;
  pango_layout_get_size(layout.get(), &width, nullptr);
  return points(width);
}

Layout paragraphLayout(const Canvas& canvas, const Paragraph& paragraph) {
  Layout layout = makeLayout(canvas, paragraph.size, Weight::regular);
  PangoAttrList* attributes = pango_attr_list_new();
  std::string text;
  for (const Run& run : paragraph.runs) {
    const std::size_t from = text.size();
    text += run.text;
    const Color& c = run.color;
    add(attributes, pango_attr_foreground_new(wide(c.red), wide(c.green), wide(c.blue)), from,
        text.size());
    add(attributes, pango_attr_foreground_alpha_new(wide(c.alpha)), from, text.size());
    add(attributes, pango_attr_weight_new(pangoWeight(run.weight)), from, text.size());
  }
  add(attributes, pango_attr_letter_spacing_new(units(spacing(paragraph.size))), 0, text.size());
  add(attributes, pango_attr_line_height_new_absolute(units(paragraph.lineHeight)), 0, text.size());
  pango_layout_set_attributes(layout.get(), attributes);
  pango_attr_list_unref(attributes);
  pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
  pango_layout_set_width(layout.get(), units(paragraph.width));
  pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
  return layout;
}

}  // namespace

void drawText(const Canvas& canvas, Point at, const std::string& text, const TextStyle& style,
              double width) {
  const Layout layout = lineLayout(canvas, text, style);
  if (width > 0 && widthOf(layout) > width) {
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    pango_layout_set_width(layout.get(), units(width));
  }
  const double part = style.align == Align::right ? 1 : style.align == Align::center ? 0.5 : 0;
  PangoLayoutLine* line = pango_layout_get_line_readonly(layout.get(), 0);
  PangoRectangle extent;
  pango_layout_line_get_extents(line, nullptr, &extent);
  cairo_new_path(canvas.context());
  cairo_move_to(canvas.context(), at.x - part * points(extent.width), at.y);
  canvas.use(style.color);
  pango_cairo_show_layout_line(canvas.context(), line);
  cairo_new_path(canvas.context());
}

void drawCentered(const Canvas& canvas, Point at, const std::string& text, const TextStyle& style,
                  double width) {
  drawText(canvas, {at.x, at.y + baselineBelow(style)}, text, style, width);
}

double textWidth(const Canvas& canvas, const std::string& text, const TextStyle& style) {
  return widthOf(lineLayout(canvas, text, style));
}

std::vector<std::string> brokenLines(const Canvas& canvas, const std::string& text,
                                     const TextStyle& style, double width) {
  const Layout layout = lineLayout(canvas, text, style);
  pango_layout_set_single_paragraph_mode(layout.get(), FALSE);
  pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
  pango_layout_set_width(layout.get(), units(width));
  std::vector<std::string> lines;
  for (int i = 0; i < pango_layout_get_line_count(layout.get()); ++i) {
    const PangoLayoutLine* line = pango_layout_get_line_readonly(layout.get(), i);
    std::string part = text.substr(static_cast<std::size_t>(line->start_index),
                                   static_cast<std::size_t>(line->length));
    part.erase(part.find_last_not_of(' ') + 1);
    lines.push_back(std::move(part));
  }
  return lines;
}

Extent measure(const Canvas& canvas, const Paragraph& paragraph) {
  const Layout layout = paragraphLayout(canvas, paragraph);
  return {widthOf(layout), pango_layout_get_line_count(layout.get()) * paragraph.lineHeight};
}

double drawParagraph(const Canvas& canvas, Point at, const Paragraph& paragraph) {
  const Layout layout = paragraphLayout(canvas, paragraph);
  // Draws each line by itself, since the layout would place the first one closer to the others.
  const int count = pango_layout_get_line_count(layout.get());
  double baseline = at.y + paragraph.lineHeight / 2 + baselineBelow({paragraph.size});
  for (int i = 0; i < count; ++i, baseline += paragraph.lineHeight) {
    cairo_new_path(canvas.context());
    cairo_move_to(canvas.context(), at.x, baseline);
    pango_cairo_show_layout_line(canvas.context(), pango_layout_get_line_readonly(layout.get(), i));
  }
  cairo_new_path(canvas.context());
  return count * paragraph.lineHeight;
}

}  // namespace varnix::drawing
