#include "pick/chosen_colors.h"

#include <cstdio>

namespace varnix::cli::pick {

namespace {

std::string ratio(const Color& color, const Color& on, const char* name) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f : 1 on %s", contrastRatio(laidOn(on, color), on), name);
  return text;
}

/// Leaves the alpha out if it is opaque.
std::string shortHex(const Color& color) {
  const std::string text = hex(color);
  return color.alpha == 255 ? text.substr(0, 7) : text;
}

struct Swatch {
  const char* label;
  Color color;
  std::string notes[4];
};

void drawSwatch(const Canvas& canvas, const Swatch& swatch, const Box& box) {
  if (swatch.color.alpha < 255) {
    canvas.saveWithin(box, kRadius);
    drawCheckerboard(canvas, box);
    canvas.restore();
  }
  canvas.fill(box, swatch.color, kRadius);
  canvas.outline(box, kEdge, kLine, kRadius);
  double baseline = box.y + box.height + 24;
  drawText(canvas, {box.x, baseline}, swatch.label, kLabel, box.width);
  drawText(canvas, {box.x, baseline += 18}, shortHex(swatch.color), kBody, box.width);
  for (const std::string& note : swatch.notes)
    drawText(canvas, {box.x, baseline += 16}, note, kCaption, box.width);
}

}  // namespace

void drawSwatches(const Canvas& canvas, const Analysis& image, const Box& row) {
  constexpr Color kWhite{255, 255, 255};
  constexpr Color kBlack{0, 0, 0};
  const std::string rule = std::string("from ") + image.rule;
  // Together they are wider than a swatch.
  const std::string saturated = image.isSaturated ? "and saturated" : "";
  const Swatch swatches[] = {
      {"Background", image.background, {"the most frequent"}},
      {"Primary text", image.primary, {ratio(image.primary, image.background, "background")}},
      {"Secondary text", image.secondary, {ratio(image.secondary, image.background, "background")}},
      {"Important",
       image.important,
       {ratio(image.important, kWhite, "white"), ratio(image.important, kBlack, "black"), rule,
        saturated}},
      {"Average",
       image.average,
       {ratio(image.average, kWhite, "white"), ratio(image.average, kBlack, "black")}},
  };
  constexpr double kSwatchGap = 12;
  const double width = (row.width - 4 * kSwatchGap) / 5;
  double x = row.x;
  for (const Swatch& swatch : swatches) {
    drawSwatch(canvas, swatch, {x, row.y, width, row.height});
    x += width + kSwatchGap;
  }
}

void drawSample(const Canvas& canvas, const Analysis& image, const Box& box) {
  canvas.fill(box, image.background, kRadius);
  canvas.outline(box, kEdge, kLine, kRadius);
  drawText(canvas, {box.x + 24, box.y + 50}, "The quick brown fox jumps over the lazy dog",
           styled(24, image.primary, Weight::semibold));
  drawText(canvas, {box.x + 24, box.y + 82}, "Pack my box with five dozen liquor jugs",
           styled(16, image.secondary));
}

}  // namespace varnix::cli::pick
