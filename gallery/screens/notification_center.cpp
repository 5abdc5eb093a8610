// Notification Centre: the whole screen, dark, with today's events.
#include "drawing/text.h"
#include "gallery/screens/backdrop.h"
#include "gallery/screens/controls.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "gallery/screens/status_bar.h"

namespace varnix::screens {

namespace {

constexpr double kMargin = 16, kIndent = 52;
constexpr Color kSoft = kWhite.withAlpha(0.6);

Answers ask(const Surroundings&) {
  Answers answers;
  auto& values = answers.values;
  values["status bar"] = askStatusBar(kWhite);
  const auto control = staged(probe::kTintedSegmentedControl, {.color = makeColor(kWhite)});
  values["segmented control"] = askColor(control, "tintColor");
  askBackdrop(answers, staged(probe::kNotificationCenter));
  return answers;
}

void drawHeader(const Canvas& canvas, double top, const char* title, const char* icon,
                const Scene& scene) {
  const auto found = scene.icons.find(icon);
  if (found != scene.icons.end()) canvas.icon(found->second, {kMargin, top + 8, 22, 22});
  drawCentered(canvas, {kIndent, top + 19}, title, {15, kSoft});
  canvas.fill({kIndent, top + 38, canvas.width() - kIndent, canvas.hairline()},
              kWhite.withAlpha(0.2));
}

struct Event {
  const char* time;
  const char* title;
  const char* place;
  unsigned color;
};

void drawEvent(const Canvas& canvas, double top, const Event& event) {
  canvas.fill({kIndent, top + 10, 2.5, 36}, rgb(event.color), 1.25);
  drawText(canvas, {kIndent + 12, top + 24}, event.title, {16, kWhite});
  drawText(canvas, {kIndent + 12, top + 43}, event.place, {14, kSoft});
  drawText(canvas, {canvas.width() - kMargin, top + 24}, event.time,
           {14, kSoft, Weight::regular, Align::right});
}

void drawReminder(const Canvas& canvas, double top, const char* text) {
  canvas.circle({kIndent + 9, top + 20}, 9);
  canvas.stroke(kSoft, 1);
  drawCentered(canvas, {kIndent + 30, top + 20}, text, {16, kWhite});
}

void draw(const Canvas& canvas, const Answers& answers, const Scene& scene) {
  drawBackdrop(canvas, {0, 0, canvas.width(), canvas.height()}, 0,
               {kBlack.withAlpha(0.52), tintOf(answers)});
  drawStatusBar(canvas, answers.colorOr("status bar", kWhite));
  drawSegmentedControl(canvas, {57.5, 30, 260, 29}, {"Today", "Notifications"}, 0,
                       answers.colorOr("segmented control", kWhite), rgb(0x2b2b33));

  const TextStyle date{33, kWhite, Weight::light};
  drawText(canvas, {kMargin, 112}, "Saturday,", date);
  drawText(canvas, {kMargin, 151}, "November 21st", date);
  drawParagraph(canvas, {kMargin, 168},
                {{{"Partly cloudy currently. It\u2019s 9\u00b0; the high today was forecast as "
                   "12\u00b0.",
                   kWhite.withAlpha(0.8)}},
                 16,
                 21,
                 canvas.width() - 2 * kMargin});

  drawHeader(canvas, 226, "Calendar", "com.example.calendar", scene);
  constexpr Event kEvents[] = {
      {"10:30 AM", "Lighthouse walk", "Harbour steps", 0x5ac8fa},
      {"1:00 PM", "Lunch with Clara", "The Lantern Room", 0xff9500},
      {"7:30 PM", "Concert", "Town Hall, row F", 0xaf52de},
  };
  double top = 266;
  for (const Event& event : kEvents) {
    drawEvent(canvas, top, event);
    top += 52;
  }
  drawHeader(canvas, 430, "Reminders", "com.example.reminders", scene);
  drawReminder(canvas, 470, "Water the plants");
  drawReminder(canvas, 508, "Return the library books");
  drawHeader(canvas, 556, "Tomorrow", "com.example.notes", scene);
  drawParagraph(canvas, {kIndent, 602},
                {{{"There is one event scheduled, and it starts at 9:00.", kWhite}}, 16, 21, 300});

  canvas.line({{canvas.width() / 2 - 16, 657}, {canvas.width() / 2 + 16, 657}});
  canvas.stroke(kWhite.withAlpha(0.5), 5);
}

}  // namespace

const Screen kNotificationCenter{"notification-centre",
                                 "Notification Centre",
                                 "com.apple.springboard",
                                 host::ProcessKind::springboard,
                                 true,
                                 true,
                                 ask,
                                 draw};

}  // namespace varnix::screens
