#include "gallery/screens/keyboard.h"

#include <string>

#include "drawing/text.h"
#include "gallery/screens/questions.h"

namespace varnix::screens {

namespace {

struct Look {
  Color background, key, functionKey, text, shadow;
};

constexpr Look kLight{rgb(0xd1d5db), kWhite, rgb(0xacb3bd), kBlack, rgb(0x898c8f)};
constexpr Color kDarkBackground = rgb(0x505357);

constexpr double kGap = 6, kKeyWidth = 31.5, kKeyHeight = 42, kPitch = 53.5, kTop = 10, kMargin = 3;
constexpr double kStep = kKeyWidth + kGap;
constexpr double kSideKey = 42;

Look lookOf(const Answers& answers) {
  if (answers.flag("keyboard light")) {
    Look look = kLight;
    // Light keys let the keyboard's colour show through, if it has one.
    look.background = answers.colorOr("keyboard", look.background);
    return look;
  }
  return {answers.colorOr("keyboard", kDarkBackground), kWhite.withAlpha(0.3),
          kWhite.withAlpha(0.14), kWhite, kBlack.withAlpha(0.3)};
}

void drawKey(const Canvas& canvas, const Box& box, const Color& color, const Look& look) {
  // Only the part that shows below, since the key may be translucent.
  canvas.save();
  canvas.rectangle(Box{box.x, box.y, box.width, box.height + 1});
  canvas.rectangle(box, 5);
  cairo_set_fill_rule(canvas.context(), CAIRO_FILL_RULE_EVEN_ODD);
  canvas.clip();
  cairo_set_fill_rule(canvas.context(), CAIRO_FILL_RULE_WINDING);
  canvas.rectangle({box.x, box.middleY(), box.width, box.height});
  canvas.clip();
  canvas.fill({box.x, box.y + 1, box.width, box.height}, look.shadow, 5);
  canvas.restore();
  canvas.fill(box, color, 5);
}

void drawLetters(const Canvas& canvas, const std::string& letters, Point at, const Look& look) {
  for (char letter : letters) {
    const Box box{at.x, at.y, kKeyWidth, kKeyHeight};
    drawKey(canvas, box, look.key, look);
    drawText(canvas, {box.middleX(), box.y + 28}, std::string(1, letter),
             {23, look.text, Weight::regular, Align::center});
    at.x += kStep;
  }
}

void drawShift(const Canvas& canvas, Point middle, const Color& color) {
  const double x = middle.x, y = middle.y;
  canvas.line({{x, y - 8.5},
               {x + 9, y + 0.5},
               {x + 4.5, y + 0.5},
               {x + 4.5, y + 7.5},
               {x - 4.5, y + 7.5},
               {x - 4.5, y + 0.5},
               {x - 9, y + 0.5}});
  canvas.close();
  canvas.stroke(color, 1.4);
}

void drawDelete(const Canvas& canvas, Point middle, const Color& color) {
  const double x = middle.x, y = middle.y;
  canvas.line(
      {{x - 11, y}, {x - 4, y - 7.5}, {x + 10.5, y - 7.5}, {x + 10.5, y + 7.5}, {x - 4, y + 7.5}});
  canvas.close();
  canvas.line({{x - 0.5, y - 3.5}, {x + 6.5, y + 3.5}});
  canvas.line({{x + 6.5, y - 3.5}, {x - 0.5, y + 3.5}});
  canvas.stroke(color, 1.4);
}

void drawGlobe(const Canvas& canvas, Point middle, const Color& color) {
  canvas.circle(middle, 9);
  canvas.line({{middle.x - 9, middle.y}, {middle.x + 9, middle.y}});
  canvas.line({{middle.x, middle.y - 9}, {middle.x, middle.y + 9}});
  for (double y : {-4.6, 4.6})
    canvas.line({{middle.x - 7.6, middle.y + y}, {middle.x + 7.6, middle.y + y}});
  cairo_t* cr = canvas.context();
  canvas.save();
  cairo_translate(cr, middle.x, middle.y);
  cairo_scale(cr, 0.46, 1);
  canvas.circle({0, 0}, 9);
  canvas.restore();
  canvas.stroke(color, 1.1);
}

void drawDictation(const Canvas& canvas, Point middle, const Color& color) {
  const double x = middle.x, y = middle.y;
  canvas.fill({x - 3.2, y - 9.5, 6.4, 12}, color, 3.2);
  cairo_new_path(canvas.context());
  cairo_arc_negative(canvas.context(), x, y - 1, 6, 3.14159265, 0);
  canvas.line({{x, y + 5}, {x, y + 9}});
  canvas.line({{x - 3.5, y + 9}, {x + 3.5, y + 9}});
  canvas.stroke(color, 1.3);
}

void drawLastRow(const Canvas& canvas, double y, const Look& look) {
  struct {
    double width;
    bool isFunction;
  } constexpr kKeys[] = {{40.5, true}, {34, true}, {34, true}, {147, false}, {89.5, true}};
  const TextStyle style{16, look.text, Weight::regular, Align::center};
  double x = kMargin;
  int index = 0;
  for (const auto& [width, isFunction] : kKeys) {
    const Box box{x, y, width, kKeyHeight};
    const Point middle{box.middleX(), box.middleY()};
    drawKey(canvas, box, isFunction ? look.functionKey : look.key, look);
    switch (index++) {
      case 0:
        drawCentered(canvas, middle, "123", style);
        break;
      case 1:
        drawGlobe(canvas, middle, look.text);
        break;
      case 2:
        drawDictation(canvas, middle, look.text);
        break;
      case 3:
        drawCentered(canvas, middle, "space", style);
        break;
      default:
        drawCentered(canvas, middle, "return", style);
    }
    x += width + kGap;
  }
}

}  // namespace

void askKeyboard(Answers& answers) {
  const auto keyboard = staged(probe::kKeyboard);
  const auto rendering = staged(probe::kKeyRendering);
  answers.values["keyboard"] = askColor(keyboard, "backgroundColor");
  answers.values["keyboard opaque"] = send<bool>(keyboard, "isOpaque"_sel);
  answers.values["keyboard light"] = send<bool>(rendering, "lightKeyboard"_sel);
}

void drawKeyboard(const Canvas& canvas, const Answers& answers) {
  const Look look = lookOf(answers);
  const double top = canvas.height() - kKeyboardHeight;
  canvas.fill({0, top, canvas.width(), kKeyboardHeight}, look.background);
  double y = top + kTop;
  drawLetters(canvas, "qwertyuiop", {kMargin, y}, look);
  y += kPitch;
  drawLetters(canvas, "asdfghjkl", {kMargin + kStep / 2, y}, look);
  y += kPitch;
  drawLetters(canvas, "zxcvbnm", {kMargin + 1.5 * kStep, y}, look);
  const Box shift{kMargin, y, kSideKey, kKeyHeight};
  const Box erase{canvas.width() - kMargin - kSideKey, y, kSideKey, kKeyHeight};
  drawKey(canvas, shift, look.functionKey, look);
  drawKey(canvas, erase, look.functionKey, look);
  drawShift(canvas, {shift.middleX(), shift.middleY()}, look.text);
  drawDelete(canvas, {erase.middleX(), erase.middleY()}, look.text);
  drawLastRow(canvas, y + kPitch, look);
}

}  // namespace varnix::screens
