#include "pick/theme.h"

#include "pick/displayed_text.h"

namespace varnix::cli::pick {

void drawCheckerboard(const Canvas& canvas, const Box& box) {
  constexpr double kSquare = 8;
  constexpr Color kTinted{232, 233, 238};
  canvas.fill(box, kPaper);
  canvas.saveWithin(box);
  bool isOddRow = false;
  for (double y = 0; y < box.height; y += kSquare, isOddRow = !isOddRow) {
    for (double x = isOddRow ? kSquare : 0; x < box.width; x += 2 * kSquare)
      canvas.fill({box.x + x, box.y + y, kSquare, kSquare}, kTinted);
  }
  canvas.restore();
}

void drawPixels(const Canvas& canvas, const Pixels& pixels, const Box& box) {
  // Only read, though cairo asks for writable memory.
  auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(pixels.argb.data()));
  const drawing::Surface picture(
      cairo_image_surface_create_for_data(
          bytes, CAIRO_FORMAT_ARGB32, static_cast<int>(pixels.width),
          static_cast<int>(pixels.height), static_cast<int>(pixels.width * 4)),
      &cairo_surface_destroy);
  canvas.sharpPicture(picture, box);
}

void drawTitle(const Canvas& canvas, drawing::Point at, std::string_view text, double width) {
  const std::string shown =
      shortenedInTheMiddle(displayedText(text), [&](const std::string& candidate) {
        return drawing::textWidth(canvas, candidate, kTitle) <= width;
      });
  drawText(canvas, at, shown, kTitle);
}

}  // namespace varnix::cli::pick
