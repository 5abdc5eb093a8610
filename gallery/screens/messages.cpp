// Messages: a conversation, its text field and the keyboard.
#include <algorithm>

#include "gallery/screens/controls.h"
#include "gallery/screens/glyphs.h"
#include "gallery/screens/keyboard.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "gallery/screens/status_bar.h"

namespace varnix::screens {

namespace {

constexpr Color kReceived = rgb(0xe5e5ea);
constexpr double kTop = 64;
constexpr double kField = 44;
constexpr double kRadius = 17;
constexpr double kSize = 17, kLine = 20;

enum class Tail : unsigned char { left, right, none };

struct Balloon {
  const char* text;
  bool isSent;
  bool hasTail;
  double gap;  ///< below it
};

constexpr Balloon kBalloons[] = {
    {"Are we still on for tonight?", false, true, 9},
    {"Yes! I booked the table by the window.", true, false, 2},
    {"Half past seven.", true, true, 9},
    {"Perfect. The whole phone looks different, what did you do to it?", false, true, 9},
    {"New colours everywhere. I will show you.", true, true, 0},
};

Answers ask(const Surroundings&) {
  Answers answers;
  auto& values = answers.values;
  values["status bar"] = askStatusBar(kBlack);
  values["navigation bar"] = askTint(probe::kNavigationBar);
  values["button"] = askTint(probe::kButton);
  std::size_t index = 0;
  for (const probe::Answer& shade : probe::shadeAnswers(staged(probe::kBalloon)))
    values["balloon " + std::to_string(index++)] = answered(shade);
  askKeyboard(answers);
  return answers;
}

/// A drop that hangs at the lower corner of that side.
void addTail(const Canvas& canvas, const Box& box, Tail tail) {
  if (tail == Tail::none) return;
  const double side = tail == Tail::right ? 1 : -1;
  const double edge = tail == Tail::right ? box.right() : box.x;
  const double bottom = box.bottom();
  cairo_t* cr = canvas.context();
  cairo_new_sub_path(cr);
  cairo_move_to(cr, edge, bottom - 14);
  cairo_curve_to(cr, edge, bottom - 7, edge + side * 2.2, bottom - 2.4, edge + side * 6.4,
                 bottom - 0.2);
  cairo_curve_to(cr, edge + side * 1, bottom + 0.6, edge - side * 4, bottom - 1.2,
                 edge - side * 7.5, bottom - 4.6);
  cairo_line_to(cr, edge - side * 12, bottom - 14);
  cairo_close_path(cr);
}

void drawBalloon(const Canvas& canvas, const Balloon& balloon, double top, const Extent& extent,
                 const std::vector<Color>& shades) {
  constexpr double kSide = 17, kPadding = 13;
  const double width = extent.width + 2 * kPadding;
  const Box box{balloon.isSent ? canvas.width() - kSide - width : kSide, top, width,
                extent.height + 14.5};
  const Tail side = balloon.isSent ? Tail::right : Tail::left;
  // One after the other: if outlines of two directions overlap, they leave a hole.
  for (const bool isTail : {false, true}) {
    if (isTail) addTail(canvas, box, balloon.hasTail ? side : Tail::none);
    else canvas.rectangle(box, kRadius);
    if (balloon.isSent) {
      // The colours run down the conversation, not down each balloon.
      canvas.fillGradient({0, kTop}, {0, canvas.height() - kKeyboardHeight - kField}, shades);
    } else {
      canvas.fill(kReceived);
    }
  }
  drawParagraph(
      canvas, {box.x + kPadding, top + 7},
      {{{balloon.text, balloon.isSent ? kWhite : kBlack}}, kSize, kLine, extent.width + 1});
}

void drawConversation(const Canvas& canvas, const Answers& answers) {
  std::vector<Color> shades = answers.colors("balloon");
  if (shades.empty()) shades = {kReceived};
  drawText(canvas, {canvas.width() / 2, kTop + 21}, "Today 9:38 AM",
           {12, kDetailText, Weight::medium, Align::center});
  double top = kTop + 30;
  for (const Balloon& balloon : kBalloons) {
    const Extent extent =
        measure(canvas, {{{balloon.text, kBlack}}, kSize, kLine, 0.64 * canvas.width()});
    drawBalloon(canvas, balloon, top, extent, shades);
    top += extent.height + 14.5 + balloon.gap;
  }
}

void drawField(const Canvas& canvas, const Answers& answers) {
  const double top = canvas.height() - kKeyboardHeight - kField;
  canvas.fill({0, top, canvas.width(), kField}, kBar);
  drawHairline(canvas, {0, top}, canvas.width(), kBarEdge);
  drawCamera(canvas, {23, top + kField / 2}, kDetailText);
  const Box field{46, top + 4.5, 262, 35};
  canvas.fill(field, rgb(0xfafafa), 6);
  canvas.outline(field, kSeparator, 2 * canvas.hairline(), 6);
  const TextStyle style{17};
  const std::string typed = "Leaving now";
  drawCentered(canvas, {field.x + 9, field.middleY()}, typed, style);
  canvas.fill({field.x + 10 + textWidth(canvas, typed, style), field.y + 7.5, 2, 20},
              answers.colorOr("button", kTint));
  drawCentered(canvas, {(field.right() + canvas.width()) / 2, field.middleY()}, "Send",
               {17, answers.colorOr("button", kTint), Weight::semibold, Align::center});
}

void draw(const Canvas& canvas, const Answers& answers, const Scene&) {
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kWhite);
  drawConversation(canvas, answers);
  const Color tint = answers.colorOr("navigation bar", kTint);
  drawNavigationBar(canvas, {"Messages", "Clara", "Details", tint, 63.5, Weight::regular});
  drawStatusBar(canvas, answers.colorOr("status bar", kBlack));
  drawField(canvas, answers);
  drawKeyboard(canvas, answers);
}

}  // namespace

const Screen kMessages{
    "messages", "Messages", "com.apple.MobileSMS", host::ProcessKind::application, false, false,
    ask,        draw};

}  // namespace varnix::screens
