#include "gallery/screens/controls.h"

#include <optional>

#include "gallery/screens/symbol.h"

namespace varnix::screens {

namespace {

constexpr double kTabBar = 49;
constexpr double kIndent = 15;

void drawBack(const Canvas& canvas, Point left, const Color& color) {
  canvas.save();
  cairo_set_line_join(canvas.context(), CAIRO_LINE_JOIN_MITER);
  cairo_set_line_cap(canvas.context(), CAIRO_LINE_CAP_SQUARE);
  canvas.line({{left.x + 9.6, left.y - 8.6}, {left.x + 1, left.y}, {left.x + 9.6, left.y + 8.6}});
  canvas.stroke(color, 2.6);
  canvas.restore();
}

}  // namespace

void drawHairline(const Canvas& canvas, Point from, double width, const Color& color) {
  canvas.fill({from.x, from.y, width, canvas.hairline()}, color);
}

void drawNavigationBar(const Canvas& canvas, const NavigationBar& bar) {
  constexpr double kMiddle = 42;
  const TextStyle style{17, bar.tint};
  canvas.fill({0, 0, canvas.width(), bar.height}, kBar);
  drawHairline(canvas, {0, bar.height}, canvas.width(), kBarEdge);
  if (!bar.back.empty()) {
    drawSymbol(canvas, {8.5, kMiddle}, bar.tint, drawBack);
    drawCentered(canvas, {26.5, kMiddle}, bar.back, style);
  }
  drawCentered(canvas, {canvas.width() / 2, kMiddle}, bar.title,
               style.with(bar.titleColor).with(Weight::semibold).with(Align::center));
  drawCentered(canvas, {canvas.width() - 15, kMiddle}, bar.action,
               style.with(bar.actionWeight).with(Align::right));
}

void drawSegmentedControl(const Canvas& canvas, const Box& box,
                          const std::vector<std::string>& titles, std::size_t selected,
                          const Color& tint, const Color& selectedText) {
  constexpr double kRadius = 4;
  const double width = box.width / static_cast<double>(titles.size());
  for (std::size_t i = 0; i < titles.size(); ++i) {
    const Box segment{box.x + static_cast<double>(i) * width, box.y, width, box.height};
    if (i == selected) {
      canvas.save();
      canvas.rectangle(box, kRadius);
      canvas.clip();
      canvas.fill(segment, tint);
      canvas.restore();
    }
    if (i > 0) canvas.fill({segment.x - 0.5, box.y, 1, box.height}, tint);
    std::optional<On> filled;
    if (i == selected && tint.dyes != nullptr) filled.emplace(canvas, tint.dyes);
    drawCentered(canvas, {segment.middleX(), segment.middleY()}, titles[i],
                 {13, i == selected ? selectedText : tint, Weight::regular, Align::center});
  }
  canvas.outline(box, tint, 1, kRadius);
}

void drawKnob(const Canvas& canvas, Point middle, double radius) {
  const Box box = around(middle, 2 * radius, 2 * radius);
  canvas.shadow(box, radius, {3, 8, 0.15});
  canvas.shadow(box, radius, {0.5, 1, 0.16});
  canvas.disc(middle, radius + 0.25, kBlack.withAlpha(0.04));
  canvas.disc(middle, radius, kWhite);
}

void drawSwitch(const Canvas& canvas, Point at, bool isOn, const SwitchColors& colors) {
  const Box track{at.x, at.y, 51, 31};
  if (isOn) {
    const Ink ink(canvas, track, colors.on, InkKind::symbol);
    canvas.fill(track, colors.on, 15.5);
  } else {
    canvas.fill(track, kWhite, 15.5);
    const Ink ink(canvas, track, colors.outline, InkKind::symbol);
    canvas.outline(track, colors.outline, 1.5, 15.5);
  }
  drawKnob(canvas, {isOn ? track.right() - 15.5 : track.x + 15.5, track.middleY()}, 14);
}

void drawSlider(const Canvas& canvas, const Box& box, double value, const SliderColors& colors) {
  constexpr double kRadius = 14;
  const double x = box.x + kRadius + value * (box.width - 2 * kRadius);
  const double y = box.middleY() - 1;
  const auto drawPart = [&](const Box& track, const Color& color) {
    std::optional<Ink> ink;
    if (color.dyes != nullptr) ink.emplace(canvas, track, color, InkKind::symbol);
    canvas.fill(track, color, 1);
  };
  drawPart({box.x, y, x - box.x, 2}, colors.minimumTrack);
  drawPart({x, y, box.right() - x, 2}, colors.maximumTrack);
  drawKnob(canvas, {x, box.middleY()}, kRadius);
}

void drawDisclosure(const Canvas& canvas, Point tip, const Color& color) {
  canvas.save();
  cairo_set_line_join(canvas.context(), CAIRO_LINE_JOIN_MITER);
  cairo_set_line_cap(canvas.context(), CAIRO_LINE_CAP_SQUARE);
  canvas.line({{tip.x - 6, tip.y - 5}, {tip.x - 1, tip.y}, {tip.x - 6, tip.y + 5}});
  canvas.stroke(color, 2);
  canvas.restore();
}

void drawCheckmark(const Canvas& canvas, Point middle, const Color& color) {
  const Ink ink(canvas, around(middle, 20, 20), color, InkKind::symbol);
  canvas.save();
  cairo_set_line_join(canvas.context(), CAIRO_LINE_JOIN_MITER);
  cairo_set_line_cap(canvas.context(), CAIRO_LINE_CAP_SQUARE);
  canvas.line({{middle.x - 5.5, middle.y + 0.5},
               {middle.x - 2, middle.y + 4},
               {middle.x + 5.5, middle.y - 4.5}});
  canvas.stroke(color, 2);
  canvas.restore();
}

void drawTabBar(const Canvas& canvas, const std::vector<Tab>& tabs, std::size_t selected,
                const Color& tint) {
  const double top = canvas.height() - kTabBar;
  canvas.fill({0, top, canvas.width(), kTabBar}, kBar);
  drawHairline(canvas, {0, top}, canvas.width(), kBarEdge);
  const double width = canvas.width() / static_cast<double>(tabs.size());
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    const double x = (static_cast<double>(i) + 0.5) * width;
    const Color& color = i == selected ? tint : kUnselected;
    drawSymbol(canvas, {x, top + 18.5}, color, tabs[i].glyph, 34);
    drawText(canvas, {x, canvas.height() - 4.5}, tabs[i].title,
             {10, color, Weight::medium, Align::center});
  }
}

void drawRows(const Canvas& canvas, double y, int count) {
  const double height = count * kRow;
  canvas.fill({0, y, canvas.width(), height}, kWhite);
  drawHairline(canvas, {0, y}, canvas.width(), kSeparator);
  for (int i = 1; i < count; ++i) {
    drawHairline(canvas, {kIndent, y + i * kRow}, canvas.width() - kIndent, kSeparator);
  }
  drawHairline(canvas, {0, y + height - canvas.hairline()}, canvas.width(), kSeparator);
}

}  // namespace varnix::screens
