// A feed of photographs. Names and topics are links.
#include "drawing/text.h"
#include "gallery/screens/around.h"
#include "gallery/screens/controls.h"
#include "gallery/screens/glyphs.h"
#include "gallery/screens/portrait.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "gallery/screens/status_bar.h"

namespace varnix::screens {

namespace {

constexpr Color kHead = rgb(0x125688);
constexpr Color kFoot = rgb(0x1c1d1f);
constexpr Color kInk = rgb(0x262626);
constexpr Color kGrey = rgb(0x9a9a9a);
constexpr double kMargin = 12;
constexpr double kTop = 64;

Answers ask(const Surroundings&) {
  Answers answers;
  answers.values["status bar"] = askStatusBar(kWhite);
  answers.values["link"] = askColor(staged(probe::kLink), "linkColor");
  return answers;
}

void drawHead(const Canvas& canvas, const Answers& answers) {
  canvas.fill({0, 0, canvas.width(), kTop}, kHead);
  drawStatusBar(canvas, answers.colorOr("status bar", kWhite));
  drawCentered(canvas, {canvas.width() / 2, 42}, "Snapshots",
               {21, kWhite, Weight::semibold, Align::center});
}

void drawOwner(const Canvas& canvas, double top, const char* name, const char* place,
               const char* time, const Color& link) {
  drawCentered(canvas, {52, top + 16}, name, {14, link, Weight::semibold});
  drawCentered(canvas, {52, top + 33}, place, {12, link});
  drawCentered(canvas, {canvas.width() - kMargin, top + 24}, time,
               {13, kGrey, Weight::regular, Align::right});
}

void drawWords(const Canvas& canvas, double top, const Color& link) {
  {
    constexpr double kScale = 0.6;
    const Around around(canvas, {kMargin + 6, top + 9});
    cairo_scale(canvas.context(), kScale, kScale);
    drawFullHeart(canvas, {0, 0}, link);
  }
  const Weight bold = Weight::semibold;
  const double width = canvas.width() - 2 * kMargin;
  drawParagraph(canvas, {kMargin + 18, top}, {{{"128 likes", link, bold}}, 14, 18, width});
  top += 24;
  top += drawParagraph(canvas, {kMargin, top},
                       {{{"clara.lind ", link, bold},
                         {"Low tide, late light. Worth every step down there with ", kInk},
                         {"@tomas", link},
                         {". ", kInk},
                         {"#harbour #lowtide #evening", link}},
                        14,
                        18.5,
                        width});
  drawParagraph(canvas, {kMargin, top + 5}, {{{"View all 12 comments", kGrey}}, 14, 18.5, width});
  top += 28;
  top += drawParagraph(
      canvas, {kMargin, top},
      {{{"tomas ", link, bold}, {"I still have sand everywhere.", kInk}}, 14, 18.5, width});
  drawParagraph(
      canvas, {kMargin, top + 3},
      {{{"ines_k ", link, bold}, {"That sky! ", kInk}, {"#nofilter", link}}, 14, 18.5, width});
}

void drawFoot(const Canvas& canvas) {
  constexpr double kHeight = 49;
  const double top = canvas.height() - kHeight;
  canvas.fill({0, top, canvas.width(), kHeight}, kFoot);
  const double width = canvas.width() / 5;
  canvas.fill({0, top, width, kHeight}, kBlack.withAlpha(0.55));
  canvas.fill({2 * width, top, width, kHeight}, kHead);
  void (*const glyphs[])(const Canvas&, Point, const Color&) = {drawHouse, drawMagnifier,
                                                                drawCamera, drawHeart, drawPerson};
  double x = width / 2;
  for (const auto glyph : glyphs) {
    glyph(canvas, {x, top + kHeight / 2},
          x < width || (x > 2 * width && x < 3 * width) ? kWhite : rgb(0xb4b4b6));
    x += width;
  }
}

void draw(const Canvas& canvas, const Answers& answers, const Scene& scene) {
  const Color link = answers.colorOr("link", kHead);
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kWhite);
  drawPortrait(canvas, around({29, kTop + 25}, 32, 32), 16, {rgb(0xffb26b), rgb(0xe8597a)});
  drawOwner(canvas, kTop, "clara.lind", "Harbour Steps", "2h", link);
  const Box photo{0, kTop + 50, canvas.width(), 351};
  if (scene.photograph) canvas.cover(scene.photograph, photo);
  drawWords(canvas, photo.bottom() + 11, link);
  drawFoot(canvas);
  drawHead(canvas, answers);
}

}  // namespace

const Screen kInstagram{
    "instagram", "Photo feed", "com.burbn.instagram", host::ProcessKind::application, false, false,
    ask,         draw};

}  // namespace varnix::screens
