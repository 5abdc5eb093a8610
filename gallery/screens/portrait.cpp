#include "gallery/screens/portrait.h"

namespace varnix::screens {

void drawPortrait(const Canvas& canvas, const Box& box, double radius,
                  const std::vector<Color>& colors) {
  constexpr Color kFigure = kWhite.withAlpha(0.9);
  canvas.rectangle(box, radius);
  canvas.fillGradient({0, box.y}, {0, box.bottom()}, colors);
  canvas.save();
  canvas.rectangle(box, radius);
  canvas.clip();
  canvas.disc({box.middleX(), box.y + 0.42 * box.height}, 0.18 * box.width, kFigure);
  canvas.disc({box.middleX(), box.bottom() + 0.02 * box.height}, 0.33 * box.width, kFigure);
  canvas.restore();
}

}  // namespace varnix::screens
