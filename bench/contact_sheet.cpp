// varnix-contact-sheet OUT.png < RESULTS: what `varnix pick --json` found, for the eye: each
// picture with its three colours and the important one. Also prints how often each rule won.
#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ImageIO/decode.h"

namespace {

using Json = nlohmann::json;
using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

// In points, drawn at two pixels each.
constexpr double kScale = 2;
constexpr int kColumns = 8;
constexpr double kMargin = 16;
constexpr double kGap = 10;
constexpr double kCardWidth = 150;
constexpr double kImageHeight = 100;
constexpr double kImportantHeight = 26;
constexpr double kSwatchHeight = 22;
constexpr double kCaptionHeight = 18;
constexpr double kCardHeight = kImageHeight + kImportantHeight + kSwatchHeight + kCaptionHeight;
constexpr double kPi = 3.14159265358979;

struct Box {
  double x, y, width, height;
};

struct Rgb {
  double red, green, blue;
};
constexpr Rgb kPage{0.95, 0.95, 0.96};
constexpr Rgb kCard{1, 1, 1};
constexpr Rgb kCaption{0.35, 0.35, 0.38};
constexpr Rgb kWhite{1, 1, 1};
constexpr Rgb kBlack{0, 0, 0};

/// Of "#rrggbb", more digits ignored.
Rgb colorOf(const std::string& hex) {
  auto channel = [&](std::size_t at) { return std::stoi(hex.substr(at, 2), nullptr, 16) / 255.0; };
  return {channel(1), channel(3), channel(5)};
}

const Rgb& textColorOn(const Rgb& color) {
  return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue > 0.55 ? kBlack : kWhite;
}

void setColor(cairo_t* context, const Rgb& color) {
  cairo_set_source_rgb(context, color.red, color.green, color.blue);
}

void fill(cairo_t* context, const Box& box, const Rgb& color) {
  setColor(context, color);
  cairo_rectangle(context, box.x, box.y, box.width, box.height);
  cairo_fill(context);
}

void clipRounded(cairo_t* context, const Box& box, double radius) {
  cairo_new_sub_path(context);
  const double right = box.x + box.width - radius;
  const double bottom = box.y + box.height - radius;
  cairo_arc(context, right, box.y + radius, radius, -kPi / 2, 0);
  cairo_arc(context, right, bottom, radius, 0, kPi / 2);
  cairo_arc(context, box.x + radius, bottom, radius, kPi / 2, kPi);
  cairo_arc(context, box.x + radius, box.y + radius, radius, kPi, 3 * kPi / 2);
  cairo_close_path(context);
  cairo_clip(context);
}

/// Centred, cut to what fits.
void text(cairo_t* context, std::string words, const Box& box, double size, const Rgb& color) {
  cairo_set_font_size(context, size);
  cairo_text_extents_t extents;
  cairo_text_extents(context, words.c_str(), &extents);
  while (extents.x_advance > box.width - 6 && words.size() > 1) {
    words.pop_back();
    cairo_text_extents(context, words.c_str(), &extents);
  }
  cairo_font_extents_t font;
  cairo_font_extents(context, &font);
  setColor(context, color);
  cairo_move_to(context, box.x + (box.width - extents.x_advance) / 2,
                box.y + (box.height + font.ascent - font.descent) / 2);
  cairo_show_text(context, words.c_str());
}

/// Null where the file cannot be read.
Surface pictureOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const auto picture = host::imageio::decode(bytes);
  if (!picture) return {nullptr, &cairo_surface_destroy};
  const auto width = static_cast<int>(picture->width);
  const auto height = static_cast<int>(picture->height);
  Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height),
                  &cairo_surface_destroy);
  unsigned char* rows = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  const std::uint8_t* from = picture->rgba.data();
  for (int y = 0; y < height; ++y) {
    auto* to = reinterpret_cast<std::uint32_t*>(rows + std::ptrdiff_t{y} * stride);
    for (int x = 0; x < width; ++x, from += 4) {
      const unsigned alpha = from[3];
      auto premultiplied = [&](int i) { return (from[i] * alpha + 127) / 255; };
      to[x] = alpha << 24 | premultiplied(0) << 16 | premultiplied(1) << 8 | premultiplied(2);
    }
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

void checkerboard(cairo_t* context, const Box& box) {
  constexpr double kSquare = 6;
  fill(context, box, {0.97, 0.97, 0.97});
  for (int row = 0; row * kSquare < box.height; ++row)
    for (int column = row % 2; column * kSquare < box.width; column += 2)
      fill(context,
           {box.x + column * kSquare, box.y + row * kSquare,
            std::min(kSquare, box.width - column * kSquare),
            std::min(kSquare, box.height - row * kSquare)},
           {0.89, 0.89, 0.9});
}

void drawPicture(cairo_t* context, cairo_surface_t* picture, const Box& box) {
  checkerboard(context, box);
  if (picture == nullptr) return;
  const double width = cairo_image_surface_get_width(picture);
  const double height = cairo_image_surface_get_height(picture);
  const double scale = std::min(box.width / width, box.height / height);
  cairo_save(context);
  cairo_translate(context, box.x + (box.width - width * scale) / 2,
                  box.y + (box.height - height * scale) / 2);
  cairo_scale(context, scale, scale);
  cairo_set_source_surface(context, picture, 0, 0);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_BEST);
  cairo_paint(context);
  cairo_restore(context);
}

/// The one that was chosen has a dot beside its name.
void drawSwatches(cairo_t* context, const Json& result, Box box) {
  box.width /= 3;
  for (const char* rule : {"background", "primary", "secondary"}) {
    const std::string hex = result.at(rule).get<std::string>().substr(0, 7);
    const Rgb color = colorOf(hex);
    fill(context, box, color);
    const bool isChosen = result.at("rule") == rule;
    text(context, (isChosen ? "\u2022 " : "") + hex, box, 7.5, textColorOn(color));
    box.x += box.width;
  }
}

void drawCard(cairo_t* context, const Json& result, const Box& card) {
  const std::string file = result.at("file");
  cairo_save(context);
  clipRounded(context, card, 8);
  fill(context, card, kCard);
  Box box{card.x, card.y, card.width, kImageHeight};
  drawPicture(context, pictureOf(file).get(), box);
  const std::string hex = result.at("important").get<std::string>().substr(0, 7);
  const Rgb important = colorOf(hex);
  box = {card.x, box.y + box.height, card.width, kImportantHeight};
  fill(context, box, important);
  const std::string how = result.at("saturated").get<bool>() ? "  saturated" : "";
  text(context, hex + how, box, 11, textColorOn(important));
  box = {card.x, box.y + box.height, card.width, kSwatchHeight};
  drawSwatches(context, result, box);
  box = {card.x, box.y + box.height, card.width, kCaptionHeight};
  text(context, std::filesystem::path(file).stem().string(), box, 8, kCaption);
  cairo_restore(context);
}

Surface drawSheet(const std::vector<Json>& results) {
  const auto rows = static_cast<int>((results.size() + kColumns - 1) / kColumns);
  const double width = 2 * kMargin + kColumns * (kCardWidth + kGap) - kGap;
  const double height = 2 * kMargin + rows * (kCardHeight + kGap) - kGap;
  Surface sheet(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::lround(width * kScale)),
                                 static_cast<int>(std::lround(height * kScale))),
      &cairo_surface_destroy);
  const Context context(cairo_create(sheet.get()), &cairo_destroy);
  cairo_scale(context.get(), kScale, kScale);
  cairo_select_font_face(context.get(), "Inter", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  fill(context.get(), {0, 0, width, height}, kPage);
  for (int i = 0; i < static_cast<int>(results.size()); ++i) {
    const int column = i % kColumns;
    const int row = i / kColumns;
    drawCard(context.get(), results[static_cast<std::size_t>(i)],
             {kMargin + column * (kCardWidth + kGap), kMargin + row * (kCardHeight + kGap),
              kCardWidth, kCardHeight});
  }
  return sheet;
}

int saturationPercent(const std::string& hex) {
  const Rgb color = colorOf(hex);
  const auto [least, most] = std::minmax({color.red, color.green, color.blue});
  return most > 0 ? static_cast<int>(100 * (most - least) / most) : 0;
}

void printSummary(const std::vector<Json>& results) {
  std::map<std::string, int> rules;
  int saturated = 0;
  int grey = 0;
  int black = 0;
  for (const Json& result : results) {
    ++rules[result.at("rule")];
    if (result.at("saturated").get<bool>()) ++saturated;
    const std::string important = result.at("important");
    if (saturationPercent(important) <= 10) ++grey;
    if (important.starts_with("#000000")) ++black;
  }
  std::printf("%zu pictures; chosen:", results.size());
  for (const auto& [rule, count] : rules) std::printf(" %s %d", rule.c_str(), count);
  std::printf("; saturated %d; grey %d, of them black %d\n", saturated, grey, black);
}

int run(const std::string& target) {
  std::vector<Json> results;
  for (const Json& result : Json::parse(std::cin)) {
    if (!result.contains("error")) results.push_back(result);
  }
  const Surface sheet = drawSheet(results);
  if (cairo_surface_write_to_png(sheet.get(), target.c_str()) != CAIRO_STATUS_SUCCESS) {
    std::fprintf(stderr, "varnix-contact-sheet: cannot write %s\n", target.c_str());
    return 1;
  }
  printSummary(results);
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: varnix-contact-sheet OUT.png < RESULTS\n");
    return 2;
  }
  try {
    return run(arguments[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "varnix-contact-sheet: %s\n", error.what());
    return 1;
  }
}
