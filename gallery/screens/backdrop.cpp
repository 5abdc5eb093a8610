#include "gallery/screens/backdrop.h"

#include "gallery/screens/kept_blurs.h"

namespace varnix::screens {

namespace {

constexpr double kSigma = 20;  ///< in points
constexpr double kSaturation = 1.8;

}  // namespace

std::optional<Color> tintOf(const Answers& answers) {
  const auto color = answers.color("tint");
  if (!color || !answers.flag("tinted")) return {};
  const double strength = answers.number("tint alpha") * answers.number("tint mask alpha");
  return color->withAlpha(color->alpha * strength);
}

Surface blurredBehind(const Canvas& canvas) {
  return keptBlur(canvas.surface(), kSigma * canvas.scale(), kSaturation);
}

void drawBackdrop(const Canvas& canvas, const Box& box, double radius, const Backdrop& backdrop) {
  drawBackdrop(canvas, box, radius, backdrop, blurredBehind(canvas));
}

void drawBackdrop(const Canvas& canvas, const Box& box, double radius, const Backdrop& backdrop,
                  const Surface& soft) {
  canvas.save();
  canvas.rectangle(box, radius);
  canvas.clip();
  canvas.picture(soft, {0, 0, canvas.width(), canvas.height()});
  canvas.fill(box, backdrop.wash);
  if (backdrop.tint) canvas.fill(box, *backdrop.tint);
  canvas.restore();
}

}  // namespace varnix::screens
