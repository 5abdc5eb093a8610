// Every dyed colour comes from an answer: with another answer the picture differs.
#include <gtest/gtest.h>

#include "drawing/picture.h"
#include "gallery/screens/screen.h"
#include "support/hosted.h"

using namespace varnix::screens;

namespace {

/// High enough for all rows of a page of settings.
constexpr double kWholePage = 1600;

Surface drawn(const Screen& screen, const Answers& answers, double height = kHeight) {
  Scene scene;
  scene.wallpaper = makeSurface(375, 667, CAIRO_FORMAT_RGB24);
  const Canvas canvas(kWidth, height, 1);
  screen.draw(canvas, answers, scene);
  return canvas.surface();
}

/// The number of pixels in which two pictures differ.
int difference(const Surface& one, const Surface& other) {
  int count = 0;
  for (int y = 0; y < heightOf(one); ++y) {
    auto row = [y](const Surface& s) {
      return reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(s.get()) +
                                                    static_cast<std::ptrdiff_t>(y) *
                                                        cairo_image_surface_get_stride(s.get()));
    };
    for (int x = 0; x < widthOf(one); ++x)
      count += (row(one)[x] & 0xffffff) != (row(other)[x] & 0xffffff);
  }
  return count;
}

class Screens : public test::Hosted {
 protected:
  /// Asks the screen in a process of its kind, and draws it again with each answer changed.
  void expectEveryAnswerToShow(const Screen& screen, std::size_t expected,
                               double height = kHeight) {
    start(screen.bundle, screen.kind);
    const Answers answers = screen.ask({rgb(0x406080)});
    EXPECT_EQ(answers.values.size(), expected);
    const Surface plain = drawn(screen, answers, height);
    for (const auto& [name, answer] : answers.values) {
      Answers other = answers;
      Answer& changed = other.values[name];
      if (const bool* truth = std::get_if<bool>(&answer)) changed = !*truth;
      else if (std::holds_alternative<double>(answer)) changed = 0.9;
      else changed = "#13b9e4ff";
      // A tint shows only if everything that belongs to it is there.
      Answers base = answers;
      if (name.starts_with("tint")) {
        for (Answers* tinted : {&base, &other}) {
          tinted->values.try_emplace("tint");
          if (name != "tint" || tinted == &base) tinted->values["tint"] = "#ff0000ff";
          if (name != "tint alpha" || tinted == &base) tinted->values["tint alpha"] = 0.6;
          if (name != "tint mask alpha" || tinted == &base) tinted->values["tint mask alpha"] = 0.7;
          if (name != "tinted" || tinted == &base) tinted->values["tinted"] = true;
        }
        if (name == "tinted") changed = false;
      }
      // Flags that only say how to use another answer.
      if (name == "keyboard opaque") continue;
      if (name == "icon") other.values["icon shows wallpaper"] = false;
      const int pixels = difference(base == answers ? plain : drawn(screen, base, height),
                                    drawn(screen, other, height));
      EXPECT_GT(pixels, 20) << screen.id << ": " << name;
    }
  }
};

TEST_F(Screens, Application) { expectEveryAnswerToShow(kApplication, 9); }
TEST_F(Screens, Messages) { expectEveryAnswerToShow(kMessages, 8); }
TEST_F(Screens, Home) { expectEveryAnswerToShow(kHome, 5); }
TEST_F(Screens, ControlCenter) { expectEveryAnswerToShow(kControlCenter, 4); }
TEST_F(Screens, NotificationCenter) { expectEveryAnswerToShow(kNotificationCenter, 6); }
TEST_F(Screens, Volume) { expectEveryAnswerToShow(kVolume, 4); }
TEST_F(Screens, Instagram) { expectEveryAnswerToShow(kInstagram, 2); }
TEST_F(Screens, Twitter) { expectEveryAnswerToShow(kTwitter, 10); }

TEST_F(Screens, Settings) {
  settings("<key>keyboard_color_type</key><integer>1</integer>");
  expectEveryAnswerToShow(kSettingsFront, 103, kWholePage);
}
TEST_F(Screens, SettingsOfAnElement) { expectEveryAnswerToShow(kSettingsElement, 21, kWholePage); }
TEST_F(Screens, SettingsOfApplications) {
  settings("<key>com.apple.Music_enabled</key><false/>");
  expectEveryAnswerToShow(kSettingsApplications, 31, kWholePage);
}
TEST_F(Screens, SettingsOfAnApplication) {
  expectEveryAnswerToShow(kSettingsApplication, 100, kWholePage);
}

/// The card is in the middle, below the last row.
TEST_F(Screens, SettingsOfAColour) {
  expectEveryAnswerToShow(kSettingsPicker, 104, 3 * kWholePage);
}
TEST_F(Screens, SettingsOfAPreset) { expectEveryAnswerToShow(kSettingsPreset, 73, kWholePage); }

TEST_F(Screens, DrawWithoutAnyAnswer) {
  for (const Screen* screen :
       {&kApplication, &kMessages, &kHome, &kControlCenter, &kNotificationCenter, &kVolume,
        &kInstagram, &kTwitter, &kSettingsFront})
    EXPECT_GT(difference(drawn(*screen, {}), makeSurface(375, 667)), 1000) << screen->id;
}

/// A process without these classes answers nothing, and nothing fails.
TEST_F(Screens, AskProcessesThatLackTheClasses) {
  start("com.example.daemon", host::ProcessKind::daemon);
  for (const Screen* screen : {&kControlCenter, &kNotificationCenter, &kVolume, &kInstagram,
                               &kSettingsFront, &kSettingsApplication}) {
    const Answers answers = screen->ask({});
    EXPECT_FALSE(answers.color("tint")) << screen->id;
    EXPECT_FALSE(answers.color("link")) << screen->id;
  }
}

}  // namespace
