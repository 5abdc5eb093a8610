// Scripts that act on a hosted process, and what they print.
#include <sys/stat.h>

#include "cli/command.h"

using test::Command;
using test::Json;
using test::Outcome;
using test::varnix;
using test::Words;

namespace {

constexpr char kDye[] = "#de3027ff";
constexpr char kTaken[] = "#1e88e5ff";
const std::string kArtwork = VARNIX_SAMPLES "/icons/com.example.notes.png";

/// The writes for a tint.
Json tint(const Json& color, CGFloat alpha) {
  constexpr CGFloat kMaskAlpha = 0.7;
  return Json::array({{"setRequiresColorStatistics:", true},
                      {"setUsesColorTintView:", true},
                      {"setColorTint:", color},
                      {"setColorTintAlpha:", double{alpha}},
                      {"setColorTintMaskAlpha:", double{kMaskAlpha}}});
}
const Json kOff = Json::array({{"setRequiresColorStatistics:", false},
                               {"setUsesColorTintView:", false},
                               {"setColorTint:", nullptr}});

class Script : public test::CommandTest {
 protected:
  std::string write(const std::string& name, const std::string& bytes) const {
    std::string path = folder.path() + "/" + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  Outcome run(const Words& process, const std::string& script) const {
    Words words = {"run"};
    words.insert(words.end(), process.begin(), process.end());
    words.insert(words.end(), {"--script", write("script", script)});
    return varnix(words);
  }
  /// The value of "surfaces" that each `print` printed.
  std::vector<Json> printed(const Words& process, const std::string& script) const {
    const Outcome outcome = run(process, script);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    std::vector<Json> values;
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);)
      values.push_back(Json::parse(line)["surfaces"]);
    return values;
  }
  std::vector<Json> springBoard(const std::string& script) const {
    return printed({"--bundle", "com.apple.springboard"}, script);
  }
  std::string important(const std::string& file) const {
    return Json::parse(varnix({"pick", "--json", file}).out)[0]["important"];
  }
};

TEST_F(Script, PrintsEverySurfaceOnItsLine) {
  const auto outcome = run({"--bundle", "com.apple.springboard"}, "print\n");
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out,
            "{\"surfaces\":{\"control-centre\":{\"writes\":[],\"contrastBackground\":null},"
            "\"notification-centre\":{\"writes\":[]},\"volume\":{\"writes\":[]},"
            "\"folder\":{\"writes\":[]},\"icon\":{\"writes\":[]},\"badge\":null,"
            "\"keyboard\":null}}\n");
}

TEST_F(Script, ShowsWritesInOrderSinceTheLastPrint) {
  const auto prints = springBoard(
      "present control-centre\npresent notification-centre\nvolume\nprint\n"
      "volume\nvolume\nprint\nprint\n");
  ASSERT_EQ(prints.size(), 3U);
  EXPECT_EQ(prints[0]["control-centre"]["writes"], tint(kDye, 0.6));
  EXPECT_EQ(prints[0]["notification-centre"]["writes"], tint(kDye, 0.6));
  EXPECT_EQ(prints[0]["volume"]["writes"], tint(kDye, 0.8));
  Json twice = tint(kDye, 0.8);
  for (const Json& one : tint(kDye, 0.8)) twice.push_back(one);
  EXPECT_EQ(prints[1]["control-centre"]["writes"], Json::array());
  EXPECT_EQ(prints[1]["volume"]["writes"], twice);
  EXPECT_EQ(prints[2]["volume"]["writes"], Json::array());
}

TEST_F(Script, ActsOnIconsAndBadges) {
  const auto prints = springBoard("folder\nicon\nbadge\nprint\nbadge\nprint\n");
  ASSERT_EQ(prints.size(), 2U);
  const Json wallpaper = {"setWallpaperColor:phase:", "#de302799", {27.0, 88.0}};
  EXPECT_EQ(prints[0]["folder"]["writes"], Json::array({wallpaper}));
  const Json piece = {"setWallpaperBackgroundRect:forContents:withFallbackColor:",
                      {27.0, 88.0, 60.0, 60.0},
                      nullptr,
                      "#de302799"};
  EXPECT_EQ(prints[0]["icon"]["writes"], Json::array({wallpaper, piece}));
  EXPECT_EQ(prints[0]["badge"], Json({{"image", kDye}, {"object", 1}}));
  EXPECT_EQ(prints[1]["badge"], Json({{"image", kDye}, {"object", 2}}));
}

TEST_F(Script, WithoutTheLibraryThePlatformWrites) {
  const auto prints = printed({"--bundle", "com.apple.springboard", "--no-library"},
                              "present control-centre\nfolder\nicon\nbadge\nkeyboard\nprint\n");
  ASSERT_EQ(prints.size(), 1U);
  EXPECT_EQ(prints[0]["control-centre"]["writes"], Json::array());
  EXPECT_EQ(prints[0]["folder"]["writes"][0][1], "#808080ff");
  EXPECT_EQ(prints[0]["icon"]["writes"][1][2], true);  // the piece of wallpaper
  EXPECT_EQ(prints[0]["badge"]["image"], "#ff3b30ff");
  EXPECT_EQ(prints[0]["keyboard"],
            Json({{"backgroundColor", nullptr}, {"opaque", true}, {"lightKeyboard", true}}));
}

TEST_F(Script, ATrackShowsTheColorOfItsArtwork) {
  settings("<key>use_album_art</key><true/>");
  const std::string album = important(kArtwork);
  const auto prints = springBoard("present control-centre\nprint\ntrack " + kArtwork +
                                  "\nprint\nwait\nprint\npause\nwait\nprint\nplay\nwait\nprint\n"
                                  "track none\nwait\nprint\n");
  ASSERT_EQ(prints.size(), 6U);
  auto writes = [&](int i) { return prints[i]["control-centre"]["writes"]; };
  EXPECT_EQ(writes(0), tint(kDye, 0.6));
  EXPECT_EQ(writes(1), Json::array());  // only once the main loop runs
  EXPECT_EQ(writes(2), tint(album, 0.6));
  EXPECT_EQ(writes(3), tint(kDye, 0.6));
  EXPECT_EQ(writes(4), tint(album, 0.6));
  EXPECT_EQ(writes(5), tint(kDye, 0.6));
  // The other centre was never presented, so it does not exist.
  EXPECT_EQ(prints[2]["notification-centre"]["writes"], Json::array());
}

TEST_F(Script, AFileNameMayHoldBlanks) {
  settings("<key>use_album_art</key><true/>");
  const std::string named = folder.path() + "/a cover  of two.png";
  std::filesystem::copy_file(kArtwork, named);
  const auto prints = springBoard("  track   " + named + "  \r\npresent control-centre\nprint\n");
  ASSERT_EQ(prints.size(), 1U);
  EXPECT_EQ(prints[0]["control-centre"]["writes"], tint(important(kArtwork), 0.6));
}

TEST_F(Script, ContrastShowsBehindControlCenter) {
  const auto prints = springBoard("contrast on\nprint\ncontrast off\nprint\n");
  ASSERT_EQ(prints.size(), 2U);
  EXPECT_EQ(prints[0]["control-centre"],
            Json({{"writes", Json::array()}, {"contrastBackground", kDye}}));
  EXPECT_EQ(prints[0]["notification-centre"]["writes"], tint(kDye, 0.6));
  EXPECT_EQ(prints[1]["control-centre"],
            Json({{"writes", tint(kDye, 0.6)}, {"contrastBackground", nullptr}}));
}

TEST_F(Script, SettingsChangeOnTheWay) {
  const auto prints = springBoard(
      "set global_color #1e88e5\nwait\nupdate-background\nprint\n"
      "set cc_color_type 1\nwait\nupdate-background\nprint\n"
      "unset cc_color_type\nunset global_color\nwait\nupdate-background\nprint\n");
  ASSERT_EQ(prints.size(), 3U);
  EXPECT_EQ(prints[0]["control-centre"]["writes"], tint(kTaken, 0.6));
  EXPECT_EQ(prints[1]["control-centre"]["writes"], kOff);
  EXPECT_EQ(prints[2]["control-centre"]["writes"], tint(kDye, 0.6));
  EXPECT_EQ(test::contentsOf(settingsPath()).find("global_color"), std::string::npos);
}

TEST_F(Script, AnOpenApplicationLendsItsIconsColor) {
  settings("<key>global_color_type</key><integer>1</integer>");
  const std::string icon = "com.example.notes=" + kArtwork;
  const Json own = inspect({"--bundle", "com.example.notes", "--icon", icon})["iconColor"];
  const auto prints =
      printed({"--bundle", "com.apple.springboard", "--icon", icon},
              "update-background\nprint\nopen com.example.notes\nupdate-background\nprint\n"
              "open none\nupdate-background\nprint\n");
  ASSERT_EQ(prints.size(), 3U);
  const Json home = prints[0]["control-centre"]["writes"];
  EXPECT_EQ(prints[1]["control-centre"]["writes"], tint(own, 0.6));
  EXPECT_NE(prints[1]["control-centre"]["writes"], home);
  EXPECT_EQ(prints[2]["control-centre"]["writes"], home);
}

TEST_F(Script, AnApplicationHasAKeyboard) {
  const auto prints = printed({"--bundle", "com.example.app"},
                              "print\nkeyboard\nprint\nset keyboard_color_type 1\nwait\n"
                              "background\nforeground\nkeyboard\nprint\n");
  ASSERT_EQ(prints.size(), 3U);
  EXPECT_EQ(prints[0], Json({{"keyboard", nullptr}}));
  EXPECT_EQ(prints[1]["keyboard"],
            Json({{"backgroundColor", kDye}, {"opaque", false}, {"lightKeyboard", false}}));
  EXPECT_EQ(prints[2]["keyboard"],
            Json({{"backgroundColor", nullptr}, {"opaque", true}, {"lightKeyboard", true}}));
}

TEST_F(Script, MessagesHasBalloons) {
  const auto prints = printed({"--bundle", "com.apple.MobileSMS"}, "balloon\nprint\n");
  ASSERT_EQ(prints.size(), 1U);
  EXPECT_EQ(prints[0]["balloon"], Json({{"colors", {"#bd130aff", "#9b0800ff"}}}));
  EXPECT_FALSE(prints[0].contains("badge"));
}

TEST_F(Script, StandardInputIsAScript) {
  Command command({"run", "--bundle", "com.example.app", "--script", "-"});
  command.write("# a keyboard\n\nkeyboard\nprint\n");
  EXPECT_TRUE(command.waitFor("\"opaque\":false"));  // line by line, as they arrive
  command.write("print");                            // and without an end of line
  EXPECT_EQ(command.finish(), 0);
  EXPECT_EQ(std::count(command.out.begin(), command.out.end(), '\n'), 2);
}

TEST_F(Script, InspectReportsWhatWasPrintedAndWhatCameOfIt) {
  const std::string script =
      write("script", "keyboard\nprint\nset global_color #1e88e5\nwait\nprint\n");
  const Words words = {"--bundle", "com.example.app", "--script", script};
  const Json report = inspect(words);
  ASSERT_EQ(report["printed"].size(), 2U);
  EXPECT_EQ(report["printed"][0]["surfaces"]["keyboard"]["backgroundColor"], kDye);
  EXPECT_EQ(report["dye"], kTaken);
  EXPECT_EQ(test::answer(report, "UIView", "tintColor", "view"), kTaken);
  Words plain = words;
  plain.insert(plain.begin(), "inspect");
  const auto outcome = varnix(plain);
  EXPECT_EQ(outcome.out.rfind("{\"surfaces\":{\"keyboard\":{\"backgroundColor\"", 0), 0U);
  EXPECT_NE(outcome.out.find("\ncom.example.app (application)\n"), std::string::npos);
}

/// Scripts whose writer never stops, or never begins.
class EndlessScript : public Script {
 protected:
  EndlessScript() { EXPECT_EQ(mkfifo(pipe().c_str(), 0600), 0); }
  std::string pipe() const { return folder.path() + "/pipe"; }
  /// Ends when nobody reads any more.
  void keepWriting() const {
    ASSERT_EQ(std::system(("yes print >" + pipe() + " 2>/dev/null &").c_str()), 0);
  }
};

TEST_F(EndlessScript, SignalsEndItBetweenLines) {
  for (int number : {SIGINT, SIGTERM, SIGHUP}) {
    keepWriting();
    Command command({"run", "--bundle", "com.example.app", "--script", pipe()});
    ASSERT_TRUE(command.waitFor("surfaces"));
    command.signal(number);
    EXPECT_EQ(command.wait(), 128 + number);
    EXPECT_EQ(command.error, "");
  }
}

TEST_F(EndlessScript, ItsTimeEndsItBetweenLines) {
  keepWriting();
  Command command({"run", "--bundle", "com.example.app", "--script", pipe(), "--for", "0.2"});
  EXPECT_EQ(command.wait(), 0);
  EXPECT_NE(command.out.find("surfaces"), std::string::npos);
}

TEST_F(EndlessScript, WhoSaysNothingIsNotWaitedForForEver) {
  for (const std::string& script : {std::string("-"), pipe()}) {
    Command timed({"run", "--bundle", "com.example.app", "--script", script, "--for", "0.2"});
    EXPECT_EQ(timed.wait(), 0) << script;  // the input stays open
    Command command({"run", "--bundle", "com.example.app", "--script", script, "--trace"});
    ASSERT_TRUE(command.waitFor("lightKeyboard"));
    command.signal(SIGTERM);
    EXPECT_EQ(command.wait(), 128 + SIGTERM) << script;
  }
}

TEST_F(EndlessScript, APersonMayThinkForLongerThanAProcessMay) {
  Command command({"inspect", "--bundle", "com.example.app", "--script", "-"});
  sleep(5);
  command.write("print\n");
  sleep(6);
  EXPECT_TRUE(command.isRunning());
  command.write("print\n");
  EXPECT_EQ(command.finish(), 0) << command.error;
  EXPECT_EQ(command.out.rfind("{\"surfaces\":{\"keyboard\":null}}\n", 0), 0U) << command.out;
}

class Wrong : public Script {
 protected:
  void refuses(const Words& process, const std::string& script, const std::string& message) const {
    const Outcome outcome = run(process, script);
    EXPECT_EQ(outcome.status, 1) << script;
    EXPECT_EQ(outcome.error, "varnix: " + folder.path() + "/script " + message + "\n");
  }
};

TEST_F(Wrong, CommandsAreNamedByTheirLine) {
  const Words app = {"--bundle", "com.example.app"};
  refuses(app, "print\n\nparint\n", "line 3: no such command: parint (did you mean print?)");
  refuses(app, "present\n",
          "line 1: expected present control-centre or present notification-centre: present");
  refuses(app, "#\ncontrast maybe\n",
          "line 2: expected contrast on or contrast off: contrast maybe");
  refuses(app, "print now\n", "line 1: expected print: print now");
  refuses(app, "set global_color", "line 1: expected set KEY VALUE: set global_color");
  refuses(app, "set colour #fff", "line 1: no such setting: colour");
  refuses(app, "unset global_color\n", "line 1: not set: global_color");
  refuses(app, std::string(10'000, 'x'), "line 1: too long: line");
}

TEST_F(Wrong, WhatAProcessLacksIsNamed) {
  const Words app = {"--bundle", "com.example.app"};
  const std::string lacks = "line 1: this process has no such class: ";
  refuses(app, "present control-centre", lacks + "SBControlCenterContentContainerView");
  refuses(app, "badge", lacks + "SBIconBadgeView");
  refuses(app, "balloon", lacks + "CKGradientView");
  refuses(app, "open com.example.notes",
          "line 1: only SpringBoard opens applications: com.example.notes");
  refuses({"--bundle", "com.example.tool", "--kind", "daemon"}, "keyboard", lacks + "UIKeyboard");
}

TEST_F(Wrong, ImagesAreLookedAt) {
  const Words board = {"--bundle", "com.apple.springboard"};
  refuses(board, "track /no/such.png", "line 1: no such image file: /no/such.png");
  const std::string text = write("text.png", "no image");
  refuses(board, "print\ntrack " + text, "line 2: not a PNG or JPEG image: " + text);
}

TEST_F(Script, AnArtworkOfWhichAPartIsThereIsAWarning) {
  const std::string whole = test::contentsOf(kArtwork);
  const std::string cut = write("cut.png", whole.substr(0, whole.size() * 3 / 4));
  const auto outcome = run({"--bundle", "com.apple.springboard"}, "track " + cut + "\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error,
            "varnix: " + cut + ": the image is truncated or damaged: only a part of it is there\n");
}

TEST_F(Wrong, AMissingScriptEndsTheCommand) {
  for (const char* command : {"run", "inspect"}) {
    const auto missing = varnix({command, "--bundle", "com.example.app", "--script", "/no/such"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_NE(missing.error.find("cannot read the script: /no/such\n"), std::string::npos);
  }
  const auto folderAsScript =
      varnix({"run", "--bundle", "com.example.app", "--script", folder.path()});
  EXPECT_EQ(folderAsScript.status, 1);
}

TEST_F(Wrong, WhatWasPrintedBeforeStays) {
  const auto outcome = run({"--bundle", "com.example.app"}, "print\nfly\nprint\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "{\"surfaces\":{\"keyboard\":null}}\n");
}

}  // namespace
