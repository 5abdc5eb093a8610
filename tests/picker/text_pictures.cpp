// Text on paper.
#include <cairo.h>

#include <memory>

#include "picker/canvas.h"

namespace pictures {

namespace {

struct Look {
  Rgba paper, ink;
  const char* words;
  double size;
};

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

void setColor(cairo_t* cairo, const Rgba& color) {
  cairo_set_source_rgb(cairo, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
}

Picture write(std::string name, Size size, const Look& look) {
  const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(size.width),
                                                   static_cast<int>(size.height)),
                        &cairo_surface_destroy);
  {
    const Context cairo(cairo_create(surface.get()), &cairo_destroy);
    setColor(cairo.get(), look.paper);
    cairo_paint(cairo.get());
    setColor(cairo.get(), look.ink);
    cairo_select_font_face(cairo.get(), "Inter", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(cairo.get(), look.size);
    for (double baseline = look.size; baseline < size.height + look.size; baseline += look.size) {
      cairo_move_to(cairo.get(), 1, baseline);
      cairo_show_text(cairo.get(), look.words);
    }
  }
  cairo_surface_flush(surface.get());
  const unsigned char* data = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  return paint(std::move(name), size, [&](unsigned x, unsigned y) {
    // One native word for each pixel, with red in the higher bits.
    std::uint32_t word = 0;
    __builtin_memcpy(&word, data + std::size_t{y} * static_cast<unsigned>(stride) + x * 4, 4);
    return Rgba{static_cast<std::uint8_t>(word >> 16), static_cast<std::uint8_t>(word >> 8),
                static_cast<std::uint8_t>(word)};
  });
}

}  // namespace

std::vector<Picture> textOnPaper() {
  constexpr std::array<Rgba, 6> kPapers{{{255, 255, 255},
                                         {250, 240, 220},
                                         {255, 220, 90},
                                         {20, 20, 24},
                                         {30, 90, 60},
                                         {128, 128, 128}}};
  constexpr std::array<Rgba, 4> kInks{{{0, 0, 0}, {180, 20, 30}, {250, 250, 250}, {20, 60, 190}}};
  constexpr std::array<const char*, 3> kWords{"The quick brown fox", "MWMWMWMWMW",
                                              "in 1984: a, b."};
  std::vector<Picture> all;
  for (const Rgba& paper : kPapers) {
    for (const Rgba& ink : kInks) {
      for (const char* words : kWords) {
        const Size size = someSize(all.size());
        all.push_back(
            write("text " + std::to_string(all.size()), size,
                  {paper, ink, words, size.height / static_cast<double>(2 + all.size() % 3)}));
      }
    }
  }
  return all;
}

}  // namespace pictures
