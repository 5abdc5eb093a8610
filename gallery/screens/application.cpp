// An application with a list of settings: bars, switches, a slider, buttons.
#include "gallery/screens/control_glyphs.h"
#include "gallery/screens/controls.h"
#include "gallery/screens/glyphs.h"
#include "gallery/screens/questions.h"
#include "gallery/screens/screen.h"
#include "gallery/screens/status_bar.h"

namespace varnix::screens {

namespace {

constexpr Color kSliderTrack = rgb(0xb7b7b7);
constexpr TextStyle kLabel{17};
constexpr double kMargin = 15;

Answers ask(const Surroundings&) {
  Answers answers;
  auto& values = answers.values;
  values["status bar"] = askStatusBar(kBlack);
  values["navigation bar"] = askTint(probe::kNavigationBar);
  values["segmented control"] = askTint(probe::kSegmentedControl);
  values["button"] = askTint(probe::kButton);
  values["cell"] = askTint(probe::kView);
  values["tab bar"] = askTint(probe::kTabBar);

  const auto control = staged(probe::kLaidOutSwitch);
  values["switch on"] = askColor(control, "onTintColor");
  values["switch outline"] = askColor(control, "tintColor");

  // Without its own colour, the track has the slider's tint.
  const auto slider = staged(probe::kSlider);
  auto& track = values["slider"];
  track = askColor(slider, "minimumTrackTintColor");
  if (std::holds_alternative<std::monostate>(track)) track = askColor(slider, "tintColor");
  return answers;
}

void drawHeader(const Canvas& canvas, double baseline, const char* text) {
  drawText(canvas, {kMargin, baseline}, text, {13, kHeaderText});
}

void drawLabel(const Canvas& canvas, double top, const char* text) {
  drawCentered(canvas, {kMargin, top + kRow / 2}, text, kLabel);
}

void drawSwitches(const Canvas& canvas, double top, const Answers& answers) {
  struct {
    const char* label;
    bool isOn;
  } constexpr kSwitches[] = {{"Shuffle", true}, {"Sound Check", true}, {"Show Lyrics", false}};
  const SwitchColors colors{answers.colorOr("switch on", kSwitchOn),
                            answers.colorOr("switch outline", kSwitchOutline)};
  drawRows(canvas, top, std::size(kSwitches));
  for (const auto& [label, isOn] : kSwitches) {
    drawLabel(canvas, top, label);
    drawSwitch(canvas, {canvas.width() - kMargin - 51, top + 6.5}, isOn, colors);
    top += kRow;
  }
}

void drawVolume(const Canvas& canvas, double top, const Answers& answers) {
  drawRows(canvas, top, 1);
  drawLoudspeaker(canvas, {kMargin + 1, top + kRow / 2}, 0, kDetailText);
  drawLoudspeaker(canvas, {canvas.width() - kMargin - 17, top + kRow / 2}, 3, kDetailText);
  drawSlider(canvas, {39, top + 8, canvas.width() - 85, 28}, 0.64,
             {answers.colorOr("slider", kTint), kSliderTrack});
}

void drawChoices(const Canvas& canvas, double top, const Answers& answers) {
  drawRows(canvas, top, 2);
  drawLabel(canvas, top, "Equalizer");
  drawCentered(canvas, {canvas.width() - 35, top + kRow / 2}, "Late Night",
               kLabel.with(kDetailText).with(Align::right));
  drawDisclosure(canvas, {canvas.width() - kMargin, top + kRow / 2}, rgb(0xc7c7cc));
  drawLabel(canvas, top + kRow, "High Quality on Wi-Fi");
  drawCheckmark(canvas, {canvas.width() - 24, top + 1.5 * kRow}, answers.colorOr("cell", kTint));
}

void draw(const Canvas& canvas, const Answers& answers, const Scene&) {
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kGroupedBackground);
  const Color tint = answers.colorOr("navigation bar", kTint);
  drawNavigationBar(canvas, {"Library", "Playback", "Edit", tint, 107.5, Weight::regular});
  drawStatusBar(canvas, answers.colorOr("status bar", kBlack));
  drawSegmentedControl(canvas, {kMargin, 70, canvas.width() - 2 * kMargin, 29},
                       {"Songs", "Albums", "Artists"}, 0,
                       answers.colorOr("segmented control", kTint), kBar);

  drawHeader(canvas, 140, "PLAYBACK");
  drawSwitches(canvas, 147, answers);
  drawHeader(canvas, 312, "VOLUME LIMIT");
  drawVolume(canvas, 319, answers);
  drawHeader(canvas, 396, "SOUND");
  drawChoices(canvas, 403, answers);

  constexpr double kButton = 526;
  drawRows(canvas, kButton, 1);
  drawCentered(canvas, {canvas.width() / 2, kButton + kRow / 2}, "Download All Songs",
               kLabel.with(answers.colorOr("button", kTint)).with(Align::center));
  drawText(canvas, {kMargin, kButton + kRow + 21}, "48 songs, 3.1 hours on this phone.",
           {13, kHeaderText});

  drawTabBar(canvas,
             {{"Playlists", drawPlaylists},
              {"Artists", drawMicrophone},
              {"Songs", drawNote},
              {"Radio", drawBroadcast},
              {"More", drawMore}},
             2, answers.colorOr("tab bar", kTint));
}

}  // namespace

const Screen kApplication{
    "application", "Application", "com.example.music", host::ProcessKind::application, false, false,
    ask,           draw};

}  // namespace varnix::screens
