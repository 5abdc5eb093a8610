// The volume's panel in the middle of the screen.
#include "drawing/text.h"
#include "gallery/screens/backdrop.h"
#include "gallery/screens/control_glyphs.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"

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
  drawText(canvas, {panel.middleX(), panel.y + 26}, "Volume",
           {16, kInk, Weight::medium, Align::center});
  drawLoudspeaker(canvas, {panel.middleX() - 37, panel.middleY() + 3}, 3, kInk, 4.9);
  constexpr double kWidth = 6.5, kGap = 1.5, kHeight = 7;
  double x = panel.middleX() - (kTicks * (kWidth + kGap) - kGap) / 2;
  for (int i = 0; i < kTicks; ++i, x += kWidth + kGap) {
    canvas.fill({x, panel.bottom() - 23, kWidth, kHeight},
                i < kLevel ? kInk : kBlack.withAlpha(0.14));
  }
}

}  // namespace

const Screen kVolume{
    "volume", "Volume", "com.apple.springboard", host::ProcessKind::springboard, true, true,
    ask,      draw};

}  // namespace varnix::screens
