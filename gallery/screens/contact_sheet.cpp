#include "gallery/screens/contact_sheet.h"

#include <algorithm>

#include "drawing/text.h"

namespace varnix::screens {

namespace {

constexpr std::size_t kInARow = 6;
constexpr double kGap = 32, kHeading = 88, kCaption = 40;
constexpr Color kPaper = rgb(0xf2f2f4);

}  // namespace

std::string contactSheet(const std::string& heading, std::span<const SheetPicture> pictures) {
  const std::size_t columns = std::clamp(pictures.size(), std::size_t{1}, kInARow);
  const std::size_t rows = (pictures.size() + columns - 1) / columns;
  const double across = kWidth + kGap, down = kHeight + kCaption + kGap;
  const Canvas canvas(kGap + static_cast<double>(columns) * across,
                      kHeading + static_cast<double>(rows) * down, 1);
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kPaper);
  drawCentered(canvas, {kGap, kHeading / 2}, heading, {32, kBlack, Weight::semibold},
               canvas.width() - 2 * kGap);
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const Box place{kGap + static_cast<double>(i % columns) * across,
                    kHeading + static_cast<double>(i / columns) * down, kWidth, kHeight};
    canvas.picture(drawing::readPng(pictures[i].png), place, 16);
    drawCentered(canvas, {place.x, place.bottom() + kCaption / 2}, pictures[i].title,
                 {17, kBlack.withAlpha(0.75)}, kWidth);
  }
  return encodePng(canvas.surface());
}

}  // namespace varnix::screens
