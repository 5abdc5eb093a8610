// varnix preview, as a process: what it writes, and what it refuses.
#include <atomic>
#include <thread>

#include "preview/gallery.h"

using test::hasColor;
using test::Outcome;
using test::Picture;
using test::Rgb;
using test::varnix;
using test::Words;

namespace {

constexpr Rgb kOdd{0x12, 0xb4, 0x57};
constexpr char kOddColor[] = "<key>global_color</key><string>#12b457</string>";

class Preview : public test::PreviewTest {
 protected:
  /// Prints one line, and leaves nothing behind.
  void expectRefused(const Words& words, int status, const std::string& why) const {
    std::set<std::string> before, after;
    for (const auto& file : test::filesIn(folder.path())) before.insert(file);
    const Outcome outcome = preview(words);
    EXPECT_EQ(outcome.status, status) << why;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
    EXPECT_NE(outcome.error.find(why), std::string::npos) << outcome.error;
    for (const auto& file : test::filesIn(folder.path())) after.insert(file);
    EXPECT_EQ(before, after);
    EXPECT_TRUE(leftovers().empty());
  }
  std::vector<std::string> leftovers() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      if (entry.path().filename().string().starts_with(".gallery")) found.push_back(entry.path());
    }
    return found;
  }
};

TEST_F(Preview, DrawsEveryScreenForFourSettings) {
  const Outcome outcome = preview({});
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')), out() + "/index.html");
  const auto files = test::filesIn(out());
  std::size_t pictures = 0;
  for (const char* tab : {"global", "icon", "album", "elements"}) {
    for (const char* screen :
         {"application", "messages", "home", "control-centre", "notification-centre", "volume",
          "instagram", "twitter", "settings", "settings-element", "settings-applications",
          "settings-application", "settings-picker", "settings-preset"}) {
      for (const char* wallpaper : {"light", "dark"}) {
        for (const char* when : {"before", "after"}) {
          const std::string name =
              std::string(tab) + "/" + screen + "-" + wallpaper + "-" + when + ".png";
          EXPECT_TRUE(std::binary_search(files.begin(), files.end(), name)) << name;
          ++pictures;
        }
        const std::string stem = std::string(tab) + "/" + screen + "-" + wallpaper;
        EXPECT_NE(bytes(stem + "-before.png"), bytes(stem + "-after.png")) << stem;
      }
    }
  }
  EXPECT_EQ(files.size(), pictures + 3) << "and the page with its two scripts";
  EXPECT_TRUE(leftovers().empty());
}

/// The library writes the file in place, so that it holds nothing for a moment.
TEST_F(Preview, ReadsSettingsThatAreJustBeingWrittenOnceMore) {
  constexpr int kRuns = 12;
  settings(kOddColor);
  const std::string whole = test::contentsOf(settingsPath());
  std::atomic<bool> isOver = false;
  std::thread writer([&] {
    while (!isOver) {
      std::ofstream(settingsPath(), std::ios::trunc).flush();
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      std::ofstream(settingsPath(), std::ios::trunc) << whole;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  });
  for (int i = 0; i < kRuns; ++i) {
    const Outcome outcome = preview({"--root", folder.path(), "--only", "settings"});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_TRUE(hasColor(picture("settings/settings-light-after.png"), kOdd)) << i;
  }
  isOver = true;
  writer.join();
}

TEST_F(Preview, DrawsWhatTheProcessesAnswer) {
  previewWell({"--settings", settingsFile(kOddColor), "--only", "application"});
  EXPECT_TRUE(hasColor(picture("settings/application-light-after.png"), kOdd));
  EXPECT_FALSE(hasColor(picture("settings/application-light-before.png"), kOdd));
}

TEST_F(Preview, ThePageListsASurfaceBeforeAndAfter) {
  previewWell({"--settings", settingsFile("<key>global_color</key><string>#1e88e5</string>"),
               "--only", "application"});
  const std::string script = test::contentsOf(out() + "/gallery.js");
  constexpr std::string_view kCall = "varnixGallery(";
  ASSERT_TRUE(script.starts_with(kCall) && script.ends_with(");\n")) << script;
  const test::Json page =
      test::Json::parse(script.substr(kCall.size(), script.size() - kCall.size() - 3));
  EXPECT_EQ(page["follows"], false);
  EXPECT_EQ(page["tabs"][0]["file"], path("settings.plist"));
  EXPECT_EQ(page["tabs"][0]["settings"], test::Json({"global_color = \"#1e88e5\""}));
  // The second row; the first is the status bar's.
  const test::Json view = page["tabs"][0]["surfaces"][1];
  EXPECT_EQ(view["class"], "UIView");
  EXPECT_EQ(view["property"], "tintColor");
  EXPECT_EQ(view["case"], "view");
  EXPECT_EQ(view["before"], "#007affff");
  EXPECT_EQ(view["after"], "#1e88e5ff");
  // The tick of a row, on white.
  EXPECT_EQ(view["contrast"]["ratio"], 3.67);
  EXPECT_EQ(view["contrast"]["needed"], 3);
  EXPECT_EQ(view["contrast"]["kind"], "symbol");
  EXPECT_EQ(view["contrast"]["screen"], "application");
  EXPECT_TRUE(view["contrast"]["wallpaper"].is_null());
  EXPECT_EQ(view["contrast"]["ground"], "#ffffff");
  EXPECT_FALSE(view["contrast"].contains("advice")) << "nobody asked for it";
}

TEST_F(Preview, SwitchedOffNothingChanges) {
  previewWell({"--settings", settingsFile("<key>enabled</key><false/>")});
  std::size_t compared = 0;
  for (const std::string& file : test::filesIn(out())) {
    const std::size_t at = file.find("-before.png");
    // The settings' pages show the switch itself.
    if (at == file.npos || file.find("/settings") != file.npos) continue;
    EXPECT_EQ(bytes(file), bytes(file.substr(0, at) + "-after.png")) << file;
    ++compared;
  }
  EXPECT_EQ(compared, 16U);
}

TEST_F(Preview, AContainersSettings) {
  settings(kOddColor);
  previewWell({"--root", folder.path(), "--only", "application"});
  EXPECT_TRUE(hasColor(picture("settings/application-dark-after.png"), kOdd));
}

TEST_F(Preview, OnlyTheScreensThatAreNamed) {
  previewWell({"--settings", settingsFile(""), "--only", "volume", "--only", "messages"});
  const std::vector<std::string> expected = {
      "gallery.js",
      "index.html",
      "settings/messages-dark-after.png",
      "settings/messages-dark-before.png",
      "settings/messages-light-after.png",
      "settings/messages-light-before.png",
      "settings/volume-dark-after.png",
      "settings/volume-dark-before.png",
      "settings/volume-light-after.png",
      "settings/volume-light-before.png",
      "state.js",
  };
  EXPECT_EQ(test::filesIn(out()), expected);
}

TEST_F(Preview, TheScaleIsPixelsAPoint) {
  const std::string file = settingsFile("");
  for (const char* scale : {"1", "1.5", "3"}) {
    const Outcome outcome = varnix(
        {"preview", "--out", out(), "--settings", file, "--only", "twitter", "--scale", scale});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    const Picture drawn = picture("settings/twitter-light-after.png");
    EXPECT_EQ(drawn.width, std::lround(375 * std::stod(scale)));
    EXPECT_EQ(drawn.height, std::lround(667 * std::stod(scale)));
  }
}

TEST_F(Preview, AWallpaperOfOnesOwnTakesTheNameOfItsLightness) {
  const std::string file = settingsFile("");
  previewWell(
      {"--settings", file, "--only", "home", "--wallpaper", flat("blue.png", {20, 40, 90})});
  EXPECT_TRUE(hasColor(picture("settings/home-dark-before.png"), {20, 40, 90}));
  EXPECT_FALSE(std::filesystem::exists(out() + "/settings/home-light-before.png"));
  previewWell(
      {"--settings", file, "--only", "home", "--wallpaper", flat("pale.png", {220, 225, 200})});
  EXPECT_TRUE(hasColor(picture("settings/home-light-before.png"), {220, 225, 200}));
}

TEST_F(Preview, AnApplicationTakesTheColourOfTheIconThatIsGiven) {
  const std::string file = settingsFile("<key>global_color_type</key><integer>1</integer>");
  const std::string icon = "com.example.music=" + flat("icon.png", {0x30, 0x60, 0xd0});
  previewWell({"--settings", file, "--only", "application", "--icon", icon});
  // It was compressed as a JPEG.
  constexpr int kTolerance = 4;
  EXPECT_TRUE(
      hasColor(picture("settings/application-light-after.png"), {0x30, 0x60, 0xd0}, kTolerance));
  EXPECT_FALSE(
      hasColor(picture("settings/application-light-before.png"), {0x30, 0x60, 0xd0}, kTolerance));
}

TEST_F(Preview, ATrackPlaysWhereThereIsArtwork) {
  const std::string file = settingsFile("<key>use_album_art</key><true/>");
  previewWell({"--settings", file, "--only", "control-centre"});
  const std::string silent = bytes("settings/control-centre-dark-after.png");
  const std::string before = bytes("settings/control-centre-dark-before.png");
  previewWell({"--settings", file, "--only", "control-centre", "--artwork",
               flat("cover.png", {0x20, 0x50, 0xc0}, 64, 64)});
  EXPECT_NE(bytes("settings/control-centre-dark-after.png"), silent);
  EXPECT_NE(bytes("settings/control-centre-dark-before.png"), before) << "its title is shown";
}

TEST_F(Preview, AnOlderGalleryIsReplaced) {
  const std::string file = settingsFile("");
  previewWell({"--settings", file, "--only", "twitter"});
  previewWell({"--settings", file, "--only", "instagram"});
  EXPECT_FALSE(std::filesystem::exists(out() + "/settings/twitter-light-after.png"));
  EXPECT_TRUE(std::filesystem::exists(out() + "/settings/instagram-light-after.png"));
  EXPECT_TRUE(leftovers().empty());
}

TEST_F(Preview, AnEmptyFolderIsTaken) {
  std::filesystem::create_directory(out());
  previewWell({"--settings", settingsFile(""), "--only", "twitter"});
  EXPECT_TRUE(std::filesystem::exists(out() + "/index.html"));
}

TEST_F(Preview, AnythingElseAtThePlaceStays) {
  const Words words = {"--settings", settingsFile(""), "--only", "twitter"};
  std::filesystem::create_directory(out());
  write("gallery/diary.txt", "dear diary");
  expectRefused(words, 1, "holds something else than a gallery");
  EXPECT_EQ(bytes("diary.txt"), "dear diary");
  // This is not a gallery either, though it looks like one.
  for (const char* name : {"index.html", "gallery.js", "state.js"})
    write(std::string("gallery/") + name, "");
  expectRefused(words, 1, "holds something else than a gallery");
  std::filesystem::remove_all(out());
  write("gallery", "a file");
  expectRefused(words, 1, "not a folder: " + out());
  EXPECT_EQ(test::contentsOf(out()), "a file");
}

TEST_F(Preview, RefusesWhatItCannotUse) {
  const std::string good = settingsFile("");
  const std::string text = write("text.png", "no picture");
  const std::string cut =
      write("cut.png", test::contentsOf(flat("whole.png", {1, 2, 3}, 64, 64)).substr(0, 60));
  const std::string missing = path("missing.png");
  for (const char* option : {"--wallpaper", "--artwork"}) {
    for (const std::string& file : {text, cut, missing, folder.path()})
      expectRefused({option, file}, 1, "cannot use the picture " + file + ": ");
  }
  expectRefused({"--icon", "com.example.music=" + text}, 1, "cannot use the picture " + text);
  expectRefused({"--icon", "com.example.music"}, 2, "not an identifier and a file, ID=FILE");
  expectRefused({"--settings", missing}, 1, "cannot read the settings file: " + missing);
  expectRefused({"--only", "kitchen"}, 2, "no such screen");
  expectRefused({"--settings", good, "--root", folder.path()}, 2, "exclude each other");
  expectRefused({"--watch"}, 2, "--root DIR or --settings FILE");
  for (const char* scale : {"0", "-1", "5", "nan", "inf"})
    expectRefused({"--scale", scale}, 2, "scale");
}

TEST_F(Preview, RefusesAPlaceThatCannotBeWritten) {
  const std::string file = settingsFile("");
  for (const std::string& place : {path("missing/gallery"), std::string("/proc/gallery")}) {
    const Outcome outcome =
        varnix({"preview", "--out", place, "--settings", file, "--only", "twitter"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error.find("varnix: cannot write: " + place), 0U) << outcome.error;
  }
  EXPECT_EQ(varnix({"preview", "--out", "", "--settings", file}).status, 2);
}

TEST_F(Preview, WhatIsReadIsNotReplaced) {
  const Words words = {"preview", "--out", out(), "--only", "twitter", "--scale", "1"};
  ASSERT_EQ(varnix(words).status, 0);
  const std::string picture = out() + "/global/twitter-light-before.png";
  const std::string link = path("link.png");
  std::filesystem::create_symlink(picture, link);
  for (const Words& input : {Words{"--wallpaper", picture}, Words{"--artwork", link},
                             Words{"--icon", "a=" + picture}, Words{"--root", out()}}) {
    Words again = words;
    again.insert(again.end(), input.begin(), input.end());
    const Outcome outcome = varnix(again);
    EXPECT_EQ(outcome.status, 2) << input[0];
    EXPECT_NE(outcome.error.find("what is read would be overwritten: "), std::string::npos)
        << outcome.error;
    EXPECT_TRUE(std::filesystem::is_regular_file(picture));
  }
}

TEST_F(Preview, WhatIsInterruptedLeavesNothing) {
  test::Command command({"preview", "--out", out(), "--scale", "4"});
  for (int i = 0; i < 2000 && leftovers().empty(); ++i) usleep(2000);
  ASSERT_FALSE(leftovers().empty());
  command.signal(SIGTERM);
  EXPECT_EQ(command.wait(), 128 + SIGTERM);
  EXPECT_TRUE(leftovers().empty());
  EXPECT_FALSE(std::filesystem::exists(out()));
}

}  // namespace
