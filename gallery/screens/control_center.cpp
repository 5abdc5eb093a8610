// Control Centre, over whatever is open.
#include "drawing/text.h"
#include "gallery/screens/backdrop.h"
#include "gallery/screens/control_glyphs.h"
#include "gallery/screens/controls.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"

namespace varnix::screens {

namespace {

constexpr double kPanel = 440;
constexpr Color kInk = kBlack.withAlpha(0.86);
constexpr Color kFaint = kBlack.withAlpha(0.5);
constexpr Color kOff = kBlack.withAlpha(0.22);
constexpr SliderColors kSlider{kWhite, kBlack.withAlpha(0.35)};

Answers ask(const Surroundings&) {
  Answers answers;
  askBackdrop(answers, staged(probe::kControlCenter));
  return answers;
}

void drawSeparator(const Canvas& canvas, double y) {
  canvas.fill({0, y, canvas.width(), canvas.hairline()}, kBlack.withAlpha(0.28));
  canvas.fill({0, y + canvas.hairline(), canvas.width(), canvas.hairline()},
              kWhite.withAlpha(0.12));
}

void drawToggles(const Canvas& canvas, double middle) {
  struct {
    Glyph draw;
    bool isOn;
  } constexpr kToggles[] = {{drawAirplane, false},
                            {drawFan, true},
                            {drawBluetooth, true},
                            {drawMoon, false},
                            {drawRotationLock, false}};
  constexpr double kDiameter = 57, kStep = 72;
  double x = 15 + kDiameter / 2;
  for (const auto& [draw, isOn] : kToggles) {
    canvas.disc({x, middle}, kDiameter / 2, isOn ? kWhite.withAlpha(0.92) : kOff);
    draw(canvas, {x, middle}, kInk);
    x += kStep;
  }
}

void drawBrightness(const Canvas& canvas, double middle) {
  drawSun(canvas, {24, middle}, 3.2, kInk);
  drawSun(canvas, {351, middle}, 5, kInk);
  drawSlider(canvas, {45, middle - 14, 285, 28}, 0.58, kSlider);
}

void drawPlayer(const Canvas& canvas, double top, bool isPlaying) {
  const double middle = canvas.width() / 2;
  const TextStyle time{11, kFaint};
  if (isPlaying) {
    drawCentered(canvas, {18, top + 15}, "1:12", time);
    drawCentered(canvas, {357, top + 15}, "-2:34", time.with(Align::right));
  } else {
    drawCentered(canvas, {18, top + 15}, "--:--", time);
    drawCentered(canvas, {357, top + 15}, "--:--", time.with(Align::right));
  }
  canvas.fill({56, top + 14, 263, 2}, kBlack.withAlpha(0.35), 1);
  if (isPlaying) {
    canvas.fill({56, top + 14, 84, 2}, kWhite, 1);
    canvas.fill({139, top + 8, 2, 14}, kInk, 1);
    drawCentered(canvas, {middle, top + 42}, "Evening Tide",
                 {18, kInk, Weight::medium, Align::center});
    drawCentered(canvas, {middle, top + 62}, "The Lanterns \u2014 Dusk",
                 {14, kInk, Weight::regular, Align::center});
  } else {
    drawCentered(canvas, {middle, top + 52}, "Not Playing",
                 {17, kFaint, Weight::regular, Align::center});
  }
  drawSkip(canvas, {middle - 86, top + 96}, -1, kInk);
  if (isPlaying) drawPause(canvas, {middle, top + 96}, kInk);
  else drawPlay(canvas, {middle, top + 96}, kInk);
  drawSkip(canvas, {middle + 86, top + 96}, 1, kInk);
  drawLoudspeaker(canvas, {20, top + 133}, 0, kInk);
  drawLoudspeaker(canvas, {344, top + 133}, 3, kInk);
  drawSlider(canvas, {45, top + 119, 285, 28}, 0.45, kSlider);
}

void drawSharing(const Canvas& canvas, double top, double height) {
  const double quarter = canvas.width() / 4;
  const TextStyle style{16, kInk};
  drawScreenSharing(canvas, {quarter - 38, top + height / 2}, kInk);
  drawCentered(canvas, {quarter - 20, top + height / 2}, "AirPlay", style);
  drawDrop(canvas, {3 * quarter - 38, top + height / 2}, kInk);
  drawCentered(canvas, {3 * quarter - 20, top + height / 2}, "AirDrop", style);
  canvas.fill({canvas.width() / 2, top, canvas.hairline(), height}, kBlack.withAlpha(0.28));
}

void drawShortcuts(const Canvas& canvas, double top) {
  constexpr Glyph kShortcuts[] = {drawTorch, drawTimer, drawCalculator, drawSmallCamera};
  constexpr double kSide = 59;
  const double gap = (canvas.width() - 4 * kSide) / 5;
  double x = gap;
  for (const Glyph glyph : kShortcuts) {
    const Box box{x, top, kSide, kSide};
    canvas.fill(box, kOff, 13);
    glyph(canvas, {box.middleX(), box.middleY()}, kInk);
    x += kSide + gap;
  }
}

void draw(const Canvas& canvas, const Answers& answers, const Scene& scene) {
  const double top = canvas.height() - kPanel;
  const Box panel{0, top, canvas.width(), kPanel};
  drawBackdrop(canvas, panel, 0, {rgb(0xb6b6ba, 0.58), tintOf(answers)});
  canvas.fill({0, 0, canvas.width(), top}, kBlack.withAlpha(0.3));
  canvas.line({{canvas.width() / 2 - 16, top + 10}, {canvas.width() / 2 + 16, top + 10}});
  canvas.stroke(kBlack.withAlpha(0.42), 5);
  drawToggles(canvas, top + 52);
  drawSeparator(canvas, top + 93);
  drawBrightness(canvas, top + 118);
  drawSeparator(canvas, top + 142);
  drawPlayer(canvas, top + 146, scene.isPlaying);
  drawSeparator(canvas, top + 303);
  drawSharing(canvas, top + 303, 49);
  drawSeparator(canvas, top + 352);
  drawShortcuts(canvas, top + 366);
}

}  // namespace

const Screen kControlCenter{"control-centre",
                            "Control Centre",
                            "com.apple.springboard",
                            host::ProcessKind::springboard,
                            true,
                            true,
                            ask,
                            draw};

}  // namespace varnix::screens
