// Text, in a neutral sans.
#pragma once

#include <string>
#include <vector>

#include "drawing/canvas.h"

namespace varnix::drawing {

enum class Weight : unsigned char { light, regular, medium, semibold, bold };
enum class Align : unsigned char { left, center, right };
/// As on screens: the sans stands for the system's, with closer letters and a cut for headlines. Or
/// as it comes.
enum class Face : unsigned char { system, plain };

struct TextStyle {
  double size;  ///< in points
  Color color = kBlack;
  Weight weight = Weight::regular;
  Align align = Align::left;
  Face face = Face::system;

  constexpr TextStyle with(const Color& other) const { return {size, other, weight, align, face}; }
  constexpr TextStyle with(Weight other) const { return {size, color, other, align, face}; }
  constexpr TextStyle with(Align other) const { return {size, color, weight, other, face}; }
};

/// How far the baseline is below a line's middle, so that capitals are centred.
constexpr double baselineBelow(const TextStyle& style) { return 0.363 * style.size; }

/// One line on its baseline. If a width is given, an ellipsis shortens the line to fit.
void drawText(const Canvas& canvas, Point at, const std::string& text, const TextStyle& style,
              double width = 0);
/// The same, with capitals centred on the line at y.
void drawCentered(const Canvas& canvas, Point at, const std::string& text, const TextStyle& style,
                  double width = 0);
double textWidth(const Canvas& canvas, const std::string& text, const TextStyle& style);

/// The lines of a text that is broken to that width, without the blanks at their ends.
std::vector<std::string> brokenLines(const Canvas& canvas, const std::string& text,
                                     const TextStyle& style, double width);

/// A piece of a paragraph with its own style; the size is the paragraph's.
struct Run {
  std::string text;
  Color color;
  Weight weight = Weight::regular;
};

struct Paragraph {
  std::vector<Run> runs;
  double size;
  double lineHeight;
  double width;  ///< lines are broken to this width
};

struct Extent {
  double width, height;
};

/// The width of the widest line and the height of all lines.
Extent measure(const Canvas& canvas, const Paragraph& paragraph);
/// The point is the upper left corner. Returns the height.
double drawParagraph(const Canvas& canvas, Point at, const Paragraph& paragraph);

}  // namespace varnix::drawing
