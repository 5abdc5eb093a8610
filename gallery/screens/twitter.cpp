// A timeline of short messages. Names, times, links and notes each have a colour.
#include "drawing/text.h"
#include "gallery/screens/controls.h"
#include "gallery/screens/glyphs.h"
#include "gallery/screens/portrait.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "gallery/screens/status_bar.h"

namespace varnix::screens {

namespace {

constexpr Color kInk = rgb(0x292f33);
constexpr Color kGrey = rgb(0xaab8c2);
constexpr Color kLine = rgb(0xe1e8ed);
constexpr double kMargin = 12, kIndent = 70;
constexpr double kTop = 64;

Answers ask(const Surroundings&) {
  Answers answers;
  auto& values = answers.values;
  values["status bar"] = askStatusBar(kBlack);
  values["navigation bar"] = askTint(probe::kNavigationBar);
  values["tab bar"] = askTint(probe::kTabBar);
  for (const probe::Surface& surface : probe::all()) {
    if (&surface.staged == &probe::kTextColors && probe::exists(surface))
      values[surface.property] = answered(probe::ask(surface));
  }
  return answers;
}

struct Chirp {
  const char* social;  ///< the line above; empty if there is none
  const char* name;
  const char* handle;
  const char* time;
  std::vector<std::pair<const char*, bool>> words;  ///< each with whether it is a link
  unsigned portrait;
};

void drawActions(const Canvas& canvas, double y) {
  const Color grey = kGrey;
  double x = kIndent + 7;
  // Reply, pass on, like.
  canvas.line({{x + 7, y + 4}, {x + 7, y + 1}, {x + 3, y - 2.5}, {x - 6, y - 2.5}});
  canvas.line({{x - 2.5, y - 6}, {x - 6, y - 2.5}, {x - 2.5, y + 1}});
  canvas.stroke(grey, 1.4);
  x += 70;
  canvas.line({{x - 7, y + 2}, {x - 7, y - 4}, {x + 2, y - 4}});
  canvas.line({{x + 7, y - 2}, {x + 7, y + 4}, {x - 2, y + 4}});
  canvas.line({{x - 9.5, y - 0.5}, {x - 7, y + 2.5}, {x - 4.5, y - 0.5}});
  canvas.line({{x + 9.5, y + 0.5}, {x + 7, y - 2.5}, {x + 4.5, y + 0.5}});
  canvas.stroke(grey, 1.4);
  x += 70;
  canvas.save();
  cairo_translate(canvas.context(), x, y);
  cairo_scale(canvas.context(), 0.62, 0.62);
  drawHeart(canvas, {0, 0}, grey);
  canvas.restore();
}

/// Returns where the message ends.
double drawChirp(const Canvas& canvas, double top, const Chirp& chirp, const Answers& answers) {
  if (chirp.social[0] != '\0') {
    drawCentered(canvas, {kIndent, top + 15}, chirp.social,
                 {13, answers.colorOr("twitterColorTextSocial", kGrey)});
    top += 17;
  }
  const Color color = rgb(chirp.portrait);
  drawPortrait(canvas, {kMargin, top + 10, 48, 48}, 5, {color, saturated(color, 1.3)});
  const TextStyle name{15, answers.colorOr("twitterColorTextUsername", kInk), Weight::bold};
  drawCentered(canvas, {kIndent, top + 18}, chirp.name, name);
  drawCentered(canvas, {kIndent + textWidth(canvas, chirp.name, name) + 5, top + 18.5},
               chirp.handle, {13, answers.colorOr("twitterColorTextLinkSubtle", kGrey)});
  drawCentered(
      canvas, {canvas.width() - kMargin, top + 18.5}, chirp.time,
      {13, answers.colorOr("twitterColorTextTimestamp", kGrey), Weight::regular, Align::right});
  Paragraph text{{}, 16, 20.5, canvas.width() - kIndent - kMargin};
  for (const auto& [words, isLink] : chirp.words)
    text.runs.push_back({words, isLink ? answers.colorOr("twitterColorTextLink", kInk) : kInk});
  top += 29 + drawParagraph(canvas, {kIndent, top + 29}, text);
  drawActions(canvas, top + 15);
  top += 31;
  drawHairline(canvas, {0, top}, canvas.width(), kLine);
  return top;
}

void drawHead(const Canvas& canvas, const Answers& answers) {
  const Color tint = answers.colorOr("navigation bar", kTint);
  drawNavigationBar(canvas, {"", "Timeline", "", tint, 63.5, Weight::regular});
  drawStatusBar(canvas, answers.colorOr("status bar", kBlack));
  drawPerson(canvas, {27, 42}, tint);
  drawMagnifier(canvas, {canvas.width() - 66, 42}, tint);
  // A pen on paper.
  const double x = canvas.width() - 25, y = 42;
  canvas.line({{x + 1, y - 8}, {x - 9, y - 8}, {x - 9, y + 9}, {x + 8, y + 9}, {x + 8, y + 0}});
  canvas.line({{x - 2.5, y + 3}, {x + 9, y - 8.5}});
  canvas.stroke(tint, 1.6);
}

void drawActivity(const Canvas& canvas, double top, const Answers& answers) {
  const Color title = answers.colorOr("twitterColorActivityTitle", kInk);
  canvas.save();
  cairo_translate(canvas.context(), 46, top + 19);
  cairo_scale(canvas.context(), 0.8, 0.8);
  drawHeart(canvas, {0, 0}, rgb(0xe2264d));
  canvas.restore();
  drawCentered(canvas, {kIndent, top + 19}, "Ines and 3 others liked your chirp",
               {15, title, Weight::semibold}, canvas.width() - kIndent - kMargin);
  drawHairline(canvas, {0, top + 38}, canvas.width(), kLine);
}

void drawTrends(const Canvas& canvas, double top, const Answers& answers) {
  canvas.fill({0, top, canvas.width(), 34}, rgb(0xf5f8fa));
  drawCentered(canvas, {kMargin, top + 17}, "Trends \u00b7 Harbour Town",
               {13, rgb(0x66757f), Weight::semibold});
  drawCentered(canvas, {canvas.width() - kMargin, top + 17}, "Change",
               {13, answers.colorOr("twitterColorChangeTrendsLocationText", kInk), Weight::regular,
                Align::right});
  drawHairline(canvas, {0, top + 34}, canvas.width(), kLine);
}

void draw(const Canvas& canvas, const Answers& answers, const Scene&) {
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kWhite);
  const std::vector<Chirp> chirps = {
      {"",
       "Tomas Berg",
       "@tomas",
       "4m",
       {{"Ferry is back, and so am I. Timetable for the winter: ", false},
        {"harbour.example/winter", true}},
       0x7fb069},
      {"Ines Kaur passed this on",
       "Clara Lind",
       "@claralind",
       "1h",
       {{"Concert tonight with ", false},
        {"@thelanterns", true},
        {", two tickets left. First come, first served. ", false},
        {"#townhall", true}},
       0xe58f65},
  };
  drawActivity(canvas, kTop, answers);
  double top = kTop + 38;
  for (const Chirp& chirp : chirps) top = drawChirp(canvas, top, chirp, answers);
  drawTrends(canvas, top, answers);
  top = drawChirp(
      canvas, top + 34,
      {"",
       "Weather Office",
       "@weather",
       "2h",
       {{"Clouds from noon on, 12\u00b0, wind from the west. ", false}, {"#forecast", true}},
       0x5b8fb9},
      answers);
  drawChirp(canvas, top,
            {"Tomas Berg passed this on",
             "Harbour Library",
             "@harbourbooks",
             "3h",
             {{"Late opening on Thursday. Bring back the atlas! ", false}, {"@ines_k", true}},
             0x9b6fb0},
            answers);
  drawTabBar(canvas,
             {{"Home", drawHouse},
              {"Notifications", drawBell},
              {"Messages", drawEnvelope},
              {"Me", drawPerson}},
             0, answers.colorOr("tab bar", kTint));
  drawHead(canvas, answers);
}

}  // namespace

const Screen kTwitter{
    "twitter", "Timeline", "com.atebits.Tweetie2", host::ProcessKind::application, false, false,
    ask,       draw};

}  // namespace varnix::screens
