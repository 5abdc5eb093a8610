// The volume's panel in the middle of the screen.
#include "drawing/ink.h"
#include "drawing/text.h"
#include "gallery/screens/backdrop.h"
#include "gallery/screens/control_glyphs.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "gallery/screens/surfaces.h"

namespace varnix::screens {

namespace {

constexpr double kSide = 155, kRadius = 8;
constexpr Color kInk = kBlack.withAlpha(0.66);
constexpr int kTicks = 16, kLevel = 10;

Answers ask(const Surroundings&) {
  Answers answers;
  askBackdrop(answers, staged(probe::kVolume));
  return answers;
}

void draw(const Canvas& canvas, const Answers& answers, const Scene&) {
  const Box panel = around({canvas.width() / 2, canvas.height() / 2}, kSide, kSide);
  drawBackdrop(canvas, panel, kRadius, {rgb(0xe6e6ea, 0.56), tintOf(answers)});
  const On dyed(canvas, kVolumeSurface);
  drawText(canvas, {panel.middleX(), panel.y + 26}, "Volume",
           {16, kInk, Weight::medium, Align::center});
  {
    const Ink ink(canvas, panel, kInk, InkKind::symbol);
    drawLoudspeaker(canvas, {panel.middleX() - 37, panel.middleY() + 3}, 3, kInk, 4.9);
  }
  constexpr double kWidth = 6.5, kGap = 1.5, kHeight = 7;
  double x = panel.middleX() - (kTicks * (kWidth + kGap) - kGap) / 2;
  for (int i = 0; i < kTicks; ++i, x += kWidth + kGap) {
    const Box tick{x, panel.bottom() - 23, kWidth, kHeight};
    if (i >= kLevel) {
      canvas.fill(tick, kBlack.withAlpha(0.14));
      continue;
    }
    const Ink ink(canvas, tick, kInk, InkKind::symbol);
    canvas.fill(tick, kInk);
  }
}

}  // namespace

const Screen kVolume{
    "volume", "Volume", "com.apple.springboard", host::ProcessKind::springboard, true, true,
    ask,      draw};

}  // namespace varnix::screens
