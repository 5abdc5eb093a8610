// What all parts of a card share.
#pragma once

#include "drawing/canvas.h"
#include "drawing/text.h"
#include "pick/analysis.h"

namespace varnix::cli::pick {

using drawing::Align;
using drawing::Box;
using drawing::Canvas;
using drawing::drawText;
using drawing::TextStyle;
using drawing::Weight;

inline constexpr Color kPage{243, 244, 247};
inline constexpr Color kPaper{255, 255, 255};
inline constexpr Color kInk{28, 30, 38};
inline constexpr Color kSubdued{122, 126, 140};
inline constexpr Color kEdge{20, 24, 40, 26};

inline constexpr double kRadius = 12;
/// Of an outline.
inline constexpr double kLine = 0.5;

constexpr TextStyle styled(double size, const Color& color, Weight weight = Weight::medium) {
  return {size, color, weight, Align::left, drawing::Face::plain};
}
inline constexpr TextStyle kTitle = styled(20, kInk, Weight::semibold);
inline constexpr TextStyle kLabel = styled(13, kInk, Weight::semibold);
inline constexpr TextStyle kBody = styled(13, kInk);
inline constexpr TextStyle kCaption = styled(11, kSubdued);

/// Light squares, so that transparency can be seen.
void drawCheckerboard(const Canvas& canvas, const Box& box);

/// Stretched to the box, each pixel a sharp square.
void drawPixels(const Canvas& canvas, const Pixels& pixels, const Box& box);

/// One line from its baseline on, whose middle is shortened to fit. The text may be any bytes.
void drawTitle(const Canvas& canvas, drawing::Point at, std::string_view text, double width);

}  // namespace varnix::cli::pick
