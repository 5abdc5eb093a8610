// Text, set in the neutral sans that stands for the system's.
#pragma once

#include <string>
#include <vector>

#include "drawing/canvas.h"

namespace varnix::drawing {

enum class Weight : unsigned char { light, regular, medium, semibold, bold };
enum class Align : unsigned char { left, center, right };

struct TextStyle {
  double size;  ///< in points
  Color color = kBlack;
  Weight weight = Weight::regular;
  Align align = Align::left;

  constexpr TextStyle with(const Color& other) const { return {size, other, weight, align}; }
  constexpr TextStyle with(Weight other) const { return {size, color, other, align}; }
  constexpr TextStyle with(Align other) const { return {size, color, weight, other}; }
};

/// How far below its middle a line's base line lies, so that capitals are centred.
constexpr double baselineBelow(const TextStyle& style) { return 0.363 * style.size; }

/// One line, at its base line; cut with an ellipsis at the width where that is given.
void drawText(const Canvas& canvas, Point at, const std::string& text, const TextStyle& style,
              double width = 0);
/// The same, capitals centred on the line at y.
void drawCentered(const Canvas& canvas, Point at, const std::string& text, const TextStyle& style,
                  double width = 0);
double textWidth(const Canvas& canvas, const std::string& text, const TextStyle& style);

/// A piece of a paragraph in a style of its own; the size is the paragraph's.
struct Run {
  std::string text;
  Color color;
  Weight weight = Weight::regular;
};

struct Paragraph {
  std::vector<Run> runs;
  double size;
  double lineHeight;
  double width;  ///< where lines are broken
};

struct Extent {
  double width, height;
};

/// The widest line and all lines' height.
Extent measure(const Canvas& canvas, const Paragraph& paragraph);
/// Its upper left corner there; returns the height.
double drawParagraph(const Canvas& canvas, Point at, const Paragraph& paragraph);

}  // namespace varnix::drawing
