#include "gallery/screens/alert_drawing.h"

#include "drawing/text.h"
#include "gallery/screens/backdrop.h"
#include "gallery/screens/controls.h"

namespace varnix::screens {

namespace {

constexpr double kAlertWidth = 270, kAlertRadius = 13, kAlertMargin = 16;
constexpr double kTitleLine = 20.5, kMessageLine = 16, kAlertButton = 44;
constexpr Color kAlertEdge = kBlack.withAlpha(0.2);

/// Lines in the middle of the box; returns their height.
double drawLines(const Canvas& canvas, double top, const std::string& text, const TextStyle& style,
                 double lineHeight, double width) {
  if (text.empty()) return 0;
  // Broken by the paragraph, then each line set in the middle.
  const std::vector<std::string> lines =
      brokenLines(canvas, text, {style.size, style.color, style.weight}, width);
  double middle = top + lineHeight / 2;
  for (const std::string& line : lines) {
    drawCentered(canvas, {canvas.width() / 2, middle}, line, style.with(Align::center));
    middle += lineHeight;
  }
  return static_cast<double>(lines.size()) * lineHeight;
}

}  // namespace

void drawAlert(const Canvas& canvas, const Alert& alert) {
  if (alert.title.empty() && alert.message.empty()) return;
  const TextStyle title{17, kBlack, Weight::semibold}, message{13};
  const double width = kAlertWidth - 2 * kAlertMargin;
  const auto linesOf = [&](const std::string& text, const TextStyle& style) {
    return text.empty() ? 0.0 : static_cast<double>(brokenLines(canvas, text, style, width).size());
  };
  const double texts =
      linesOf(alert.title, title) * kTitleLine + linesOf(alert.message, message) * kMessageLine + 4;
  const bool areBeside = alert.buttons.size() == 2;
  const double rows = areBeside ? 1 : static_cast<double>(alert.buttons.size());
  constexpr double kAbove = 19, kBelow = 19;
  const double height = kAbove + texts + kBelow + rows * kAlertButton;
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kBlack.withAlpha(0.4));
  const Box box = around({canvas.width() / 2, canvas.height() / 2}, kAlertWidth, height);
  drawBackdrop(canvas, box, kAlertRadius, {rgb(0xfafafa, 0.95), {}});
  double y = box.y + kAbove;
  y += drawLines(canvas, y, alert.title, title, kTitleLine, width) + 4;
  y += drawLines(canvas, y, alert.message, message, kMessageLine, width) + kBelow;
  for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
    const double part = areBeside ? kAlertWidth / 2 : kAlertWidth;
    const double x = box.x + (areBeside ? static_cast<double>(i) * part : 0);
    if (i == 0 || !areBeside) drawHairline(canvas, {box.x, y}, kAlertWidth, kAlertEdge);
    if (i > 0 && areBeside) canvas.fill({x, y, canvas.hairline(), kAlertButton}, kAlertEdge);
    // The one that cancels is the default.
    const Weight weight = i == 0 ? Weight::semibold : Weight::regular;
    drawCentered(canvas, {x + part / 2, y + kAlertButton / 2}, alert.buttons[i],
                 {17, kTint, weight, Align::center}, part - 16);
    if (!areBeside) y += kAlertButton;
  }
}

}  // namespace varnix::screens
