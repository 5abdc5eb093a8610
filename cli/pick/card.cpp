#include "pick/card.h"

#include <algorithm>
#include <cmath>

#include "pick/chosen_colors.h"
#include "pick/heat_map.h"
#include "pick/theme.h"
#include "picker/frame_size.h"

namespace varnix::cli::pick {

namespace {

constexpr int kScale = 2;  // pixels in a point
/// The rasteriser's limit, in points.
constexpr int kMaximumHeight = 32767 / kScale;

// In points, on a grid of 4.
constexpr int kMargin = 24;
constexpr int kPadding = 32;
constexpr int kPanel = 208;  // 13 for each of 16 cells, 6.5 for each of 32
constexpr int kGap = 32;
constexpr int kContentWidth = 3 * kPanel + 2 * kGap;
constexpr int kCardWidth = kContentWidth + 2 * kPadding;
constexpr int kPageWidth = kCardWidth + 2 * kMargin;
constexpr int kPanelsTop = 112;
constexpr int kSwatchesTop = 376;
constexpr int kSwatchHeight = 64;
constexpr int kSampleTop = 560;
constexpr int kSampleHeight = 112;
constexpr int kCardRadius = 20;
constexpr int kCardHeight = kSampleTop + kSampleHeight + kPadding;

void panelHeading(const Canvas& canvas, double x, double y, const char* title) {
  drawText(canvas, {x, y + kPanelsTop - 12}, title, styled(12, kSubdued));
}

void drawHeader(const Canvas& canvas, const Analysis& image, double x, double y) {
  const std::size_t slash = image.file.rfind('/');
  const std::string name = slash == image.file.npos ? image.file : image.file.substr(slash + 1);
  drawTitle(canvas, {x, y + 52}, name, kContentWidth);
}

void caption(const Canvas& canvas, const Box& panel, const std::string& text) {
  drawText(canvas, {panel.x, panel.y + panel.height + 21}, text, kCaption);
}

void drawPreview(const Canvas& canvas, const Analysis& image, const Box& box) {
  canvas.fill(box, kPage, kRadius);
  const double width = static_cast<double>(image.preview.width) / kScale;
  const double height = static_cast<double>(image.preview.height) / kScale;
  // At whole pixels, since the preview is shown at its own size.
  auto centred = [](double room, double length) { return std::floor(room - length) / 2; };
  const Box inner{box.x + centred(box.width, width), box.y + centred(box.height, height), width,
                  height};
  canvas.saveWithin(box, kRadius);
  drawCheckerboard(canvas, inner);
  drawPixels(canvas, image.preview, inner);
  canvas.restore();
  canvas.outline(box, kEdge, kLine, kRadius);
  caption(canvas, box,
          std::to_string(image.width) + " \u00D7 " + std::to_string(image.height) + " pixels");
}

/// Outlines a square of that side in the box's upper left corner. Its outer edges follow the box's
/// rounding.
void outlineCorner(const Canvas& canvas, const Box& box, double side, const Color& color,
                   double line) {
  const double out = line / 2;
  canvas.saveWithin({box.x - out, box.y - out, side + line, side + line});
  canvas.outline(box.inset(-out), color, line, kRadius + out);
  canvas.fill({box.x + side - out, box.y, line, side + out}, color);
  canvas.fill({box.x, box.y + side - out, side + out, line}, color);
  canvas.restore();
}

void drawSqueezed(const Canvas& canvas, const Analysis& image, const Box& box) {
  canvas.saveWithin(box, kRadius);
  drawCheckerboard(canvas, box);
  drawPixels(canvas, image.squeezed, box);
  const double read = box.width * kProccesedWidth / kTotalWidth;
  const Color veil{255, 255, 255, 150};
  canvas.fill({box.x + read, box.y, box.width - read, box.height}, veil);
  canvas.fill({box.x, box.y + read, read, box.height - read}, veil);
  canvas.restore();
  canvas.outline(box, kEdge, kLine, kRadius);
  // Visible on light and dark.
  outlineCorner(canvas, box, read, kPaper, 3.5);
  outlineCorner(canvas, box, read, kInk, 1.5);
  caption(canvas, box, "Its upper left quarter counts");
}

/// Faint layers, since to blur a shape as large as a card takes a second.
void drawShadow(const Canvas& canvas, const Box& card) {
  constexpr Color kLayer{20, 24, 40, 1};
  constexpr int kReach = 12;
  const Box below{card.x, card.y + 4, card.width, card.height};
  for (int reach = kReach; reach > 0; --reach)
    canvas.fill(below.inset(-reach), kLayer, kCardRadius + reach);
}

void drawCard(const Canvas& canvas, const Analysis& image, double top) {
  const Box card{kMargin, top, kCardWidth, kCardHeight};
  drawShadow(canvas, card);
  canvas.fill(card, kPaper, kCardRadius);
  const double x = card.x + kPadding;
  drawHeader(canvas, image, x, top);

  struct Panel {
    const char* title;
    void (*draw)(const Canvas&, const Analysis&, const Box&);
  };
  constexpr Panel kPanels[] = {{"Image", drawPreview},
                               {"Squeezed to 32 \u00D7 32 pixels", drawSqueezed},
                               {"How many samples are alike", drawHeatMap}};
  double left = x;
  for (const Panel& panel : kPanels) {
    panelHeading(canvas, left, top, panel.title);
    panel.draw(canvas, image, {left, top + kPanelsTop, kPanel, kPanel});
    left += kPanel + kGap;
  }
  drawSwatches(canvas, image, {x, top + kSwatchesTop, kContentWidth, kSwatchHeight});
  drawSample(canvas, image, {x, top + kSampleTop, kContentWidth, kSampleHeight});
}

}  // namespace

std::size_t maximumCards() { return (kMaximumHeight - kMargin) / (kCardHeight + kMargin); }

std::pair<unsigned, unsigned> previewSize(unsigned width, unsigned height) {
  constexpr double kSide = kPanel * kScale;
  const double scale = kSide / std::max({width, height, 1U});
  auto scaled = [&](unsigned length) {
    return static_cast<unsigned>(std::max(std::lround(length * scale), 1L));
  };
  return {scaled(width), scaled(height)};
}

std::string drawCards(const std::vector<Analysis>& images) {
  auto isDrawn = [](const Analysis& image) { return image.error.empty(); };
  const auto count = static_cast<int>(std::ranges::count_if(images, isDrawn));
  if (count == 0) return {};
  const int height = kMargin + count * (kCardHeight + kMargin);
  const Canvas canvas(kPageWidth, height, kScale);
  canvas.fill({0, 0, kPageWidth, static_cast<double>(height)}, kPage);
  double top = kMargin;
  for (const Analysis& image : images) {
    if (!isDrawn(image)) continue;
    drawCard(canvas, image, top);
    top += kCardHeight + kMargin;
  }
  return drawing::encodePng(canvas.surface());
}

}  // namespace varnix::cli::pick
