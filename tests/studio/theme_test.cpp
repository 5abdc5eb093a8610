// A theme and its file: who changes what, and what happens when both do.
#include <sys/file.h>

#include "ImageIO/decode.h"
#include "studio/studio.h"

namespace {

using test::Json;
using test::Reply;

class StudioTheme : public test::StudioTest {
 protected:
  std::string written() const { return test::contentsOf(file()); }
  bool fileGets(const std::string& text) const {
    const auto end = std::chrono::steady_clock::now() + test::kPatience;
    while (written().find(text) == std::string::npos) {
      if (std::chrono::steady_clock::now() > end) return false;
      usleep(5'000);
    }
    return true;
  }
  Reply picture(const std::string& screen, const std::string& more = "") const {
    return get("picture/" + screen + "?wallpaper=light&scale=1&revision=" +
               std::to_string(theme()["revision"].get<long>()) + more);
  }
  static bool hasColor(const std::string& png, unsigned rgb) {
    const auto picture = host::imageio::decode(png);
    for (std::size_t i = 0; picture && i + 3 < picture->rgba.size(); i += 4) {
      if ((picture->rgba[i] << 16 | picture->rgba[i + 1] << 8 | picture->rgba[i + 2]) ==
          static_cast<int>(rgb))
        return true;
    }
    return false;
  }
  static std::string flat(const std::array<std::uint8_t, 3>& color) {
    host::imageio::Picture picture{80, 120, false, 0, {}};
    for (int i = 0; i < 80 * 120; ++i)
      picture.rgba.insert(picture.rgba.end(), {color[0], color[1], color[2], 255});
    return *host::imageio::encodePng(picture);
  }
};

TEST_F(StudioTheme, AChangeIsShownAndSaved) {
  write(color("global_color", "#1e88e5") + "<key>mine</key><array><integer>1</integer></array>");
  start({file()});
  EXPECT_TRUE(hasColor(picture("application").body, 0x1e88e5));
  const Json changed = change({{"global_color", "#12b457"}, {"use_album_art", true}}, 1).json();
  EXPECT_EQ(changed["values"]["global_color"], "#12b457");
  EXPECT_EQ(changed["values"]["use_album_art"], true);
  const std::string png = picture("application").body;
  EXPECT_TRUE(hasColor(png, 0x12b457));
  EXPECT_FALSE(hasColor(png, 0x1e88e5));
  EXPECT_TRUE(fileGets("#12b457"));
  EXPECT_TRUE(becomes("/isSaved", true));
  EXPECT_NE(written().find("<true/>"), std::string::npos);
  EXPECT_NE(written().find("<key>mine</key>"), std::string::npos) << "what is unknown stays";
  const Json removed = change({{"global_color", nullptr}}, changed["revision"]).json();
  EXPECT_FALSE(removed["values"].contains("global_color"));
  EXPECT_TRUE(hasColor(picture("application").body, 0xde3027));
}

TEST_F(StudioTheme, AMissingFileIsMadeByTheFirstChange) {
  start({file()});
  EXPECT_EQ(theme()["values"], Json::object());
  EXPECT_FALSE(std::filesystem::exists(file()));
  change({{"enabled", false}}, 1);
  EXPECT_TRUE(fileGets("<key>enabled</key>"));
}

TEST_F(StudioTheme, UnusableFilesAreRefused) {
  write("");
  std::ofstream(file()) << "no settings";
  EXPECT_EQ(test::varnix({"studio", "--no-browser", file()}).status, 1);
  const auto none = test::varnix({"studio", "--no-browser", folder.path() + "/none/theme.plist"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.error, "varnix: no such folder: " + folder.path() + "/none\n");
}

TEST_F(StudioTheme, WrongValuesAreRefused) {
  start();
  for (const auto& [key, value] : {std::pair<const char*, Json>{"global_color", "blue"},
                                   {"enabled", "maybe"},
                                   {"enabled", Json::array()},
                                   {"statusbar_color_type", "x"},
                                   {"statusbar_color_type", 1.5},
                                   {"no_such_thing", 1},
                                   {"cached_icon_color_a", "x"},
                                   {"a\u0001_enabled", true}}) {
    const Reply reply = change({{key, value}}, 1);
    EXPECT_EQ(reply.status, 400) << key;
    EXPECT_NE(reply.json()["failure"], "") << key;
  }
  for (const char* body : {"", "{", "[]", "{\"changes\": 1}"})
    EXPECT_EQ(request("POST", path + "changes", ownHost(), body).status, 400) << body;
  EXPECT_EQ(theme()["values"], Json::object());
  EXPECT_EQ(theme()["revision"], 1);
}

TEST_F(StudioTheme, AnEditorsChangeShowsAtOnce) {
  write(color("global_color", "#1e88e5"));
  start({file()});
  const Json before = theme();
  write(color("global_color", "#12b457"));
  EXPECT_TRUE(becomes("/values/global_color", "#12b457"));
  EXPECT_TRUE(hasColor(picture("application").body, 0x12b457));
  EXPECT_EQ(theme()["history"], (Json{"", "file"}));
  EXPECT_EQ(theme()["isSaved"], true);
  std::ofstream(file()) << "<plist><dict><key>half";
  EXPECT_TRUE(becomes("/isSaved", true));
  const auto end = std::chrono::steady_clock::now() + test::kPatience;
  while (theme()["problem"] == "" && std::chrono::steady_clock::now() < end) usleep(5'000);
  EXPECT_NE(theme()["problem"], "");
  change({{"global_color", "#7a1fc3"}}, theme()["revision"]);
  usleep(400'000);
  EXPECT_EQ(written(), "<plist><dict><key>half") << "what somebody is writing is left alone";
  write(color("sms_color", "#ffffff"));
  EXPECT_TRUE(becomes("/problem", ""));
}

TEST_F(StudioTheme, ChangesOfDifferentSettingsAreBothKept) {
  write(color("global_color", "#1e88e5"));
  start({file()});
  EXPECT_EQ(change({{"sms_color", "#010203"}}, 1, "one").status, 200);
  EXPECT_EQ(change({{"cc_color", "#040506"}}, 1, "another").status, 200);
  write(color("global_color", "#12b457"));
  EXPECT_TRUE(becomes("/values/global_color", "#12b457"));
  EXPECT_EQ(theme()["values"]["sms_color"], "#010203");
  EXPECT_EQ(theme()["values"]["cc_color"], "#040506");
  EXPECT_TRUE(fileGets("#040506"));
  EXPECT_NE(written().find("#12b457"), std::string::npos);
}

TEST_F(StudioTheme, AnotherPagesChangeIsAConflict) {
  start();
  EXPECT_EQ(change({{"global_color", "#010203"}}, 1, "one").status, 200);
  EXPECT_EQ(change({{"global_color", "#010204"}}, 1, "one").status, 200) << "its own is none";
  const Reply refused = change({{"global_color", "#040506"}}, 1, "another");
  EXPECT_EQ(refused.status, 409);
  EXPECT_EQ(refused.json()["values"]["global_color"], "#010204");
  EXPECT_EQ(change({{"global_color", "#040506"}}, refused.json()["revision"], "another").status,
            200);
}

class Conflict : public StudioTheme, public testing::WithParamInterface<bool> {};

TEST_P(Conflict, IsSettledByWhoeverIsAsked) {
  write(color("global_color", "#1e88e5") + color("sms_color", "#000000"));
  start({file()});
  // While the folder is locked, the studio cannot save.
  const int lock = open(folder.path().c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  change({{"global_color", "#010203"}}, 1);
  write(color("global_color", "#040506") + color("sms_color", "#ffffff"));
  close(lock);
  ASSERT_TRUE(becomes(
      "/conflict",
      Json::array({{{"key", "global_color"}, {"ours", "#010203"}, {"theirs", "#040506"}}})));
  EXPECT_NE(written().find("#040506"), std::string::npos) << "nothing is lost meanwhile";
  const bool keepsTheme = GetParam();
  const Json settled = post("conflict", {{"keep", keepsTheme ? "theme" : "file"}}).json();
  const std::string kept = keepsTheme ? "#010203" : "#040506";
  EXPECT_EQ(settled["conflict"], Json());
  EXPECT_EQ(settled["values"]["global_color"], kept);
  EXPECT_EQ(settled["values"]["sms_color"], "#ffffff") << "nobody else changed it";
  EXPECT_TRUE(fileGets(kept));
  EXPECT_TRUE(becomes("/isSaved", true));
}

INSTANTIATE_TEST_SUITE_P(Both, Conflict, testing::Bool());

TEST_F(StudioTheme, EveryStateComesBack) {
  write(color("global_color", "#1e88e5"));
  start({file()});
  long revision = 1;
  for (int i = 0; i < 100; ++i) {
    char text[8];
    std::snprintf(text, sizeof text, "#%06x", i);
    revision = change({{"global_color", text}}, revision).json()["revision"];
  }
  EXPECT_EQ(theme()["history"].size(), 101U);
  EXPECT_EQ(post("history", {{"position", 0}}).json()["values"]["global_color"], "#1e88e5");
  EXPECT_TRUE(fileGets("#1e88e5"));
  EXPECT_EQ(post("history", {{"position", 100}}).json()["values"]["global_color"], "#000063");
  EXPECT_EQ(post("history", {{"position", 101}}).status, 404);
  post("history", {{"position", 50}});
  EXPECT_EQ(change({{"enabled", false}}, theme()["revision"]).json()["history"].size(), 52U);
}

TEST_F(StudioTheme, ADragIsOneStep) {
  start();
  for (const char* value : {"#000001", "#000002", "#000003"})
    post("changes", {{"page", "p"},
                     {"revision", 1},
                     {"group", "drag 1"},
                     {"label", "Colour"},
                     {"changes", {{"global_color", value}}}});
  EXPECT_EQ(theme()["history"], (Json{"", "Colour"}));
  EXPECT_EQ(post("history", {{"position", 0}}).json()["values"], Json::object());
  EXPECT_EQ(post("history", {{"position", 1}}).json()["values"]["global_color"], "#000003");
}

TEST_F(StudioTheme, KilledInTheMiddleItLeavesAReadableFile) {
  write(color("global_color", "#1e88e5"));
  for (int round = 0; round < 5; ++round) {
    start({file()});
    for (int i = 0; i < 30; ++i) change({{"global_color", i % 2 == 0 ? "#010203" : "#040506"}}, 1);
    usleep(140'000 + 10'000 * round);
    command->signal(SIGKILL);
    EXPECT_EQ(command->wait(), -SIGKILL);
    const auto check = test::varnix({"settings", "check", file()});
    EXPECT_EQ(check.status, 0) << check.out << check.error;
  }
}

TEST_F(StudioTheme, WhatIsNotSavedYetIsSavedAtTheEnd) {
  start({file()});
  change({{"global_color", "#010203"}}, 1);
  command->signal(SIGTERM);
  EXPECT_EQ(command->wait(), 128 + SIGTERM);
  EXPECT_NE(written().find("#010203"), std::string::npos);
}

TEST_F(StudioTheme, OnlyWhatChangedIsDrawnAgain) {
  start();
  const Reply messages = picture("messages"), home = picture("home");
  const std::string tag = messages.headers.at("ETag");
  change({{"sms_color_type", 2}, {"sms_color", "#12b457"}}, 1);
  EXPECT_EQ(picture("home", "&have=" + home.headers.at("ETag").substr(
                                           1, home.headers.at("ETag").size() - 2))
                .status,
            204);
  const Reply changed = picture("messages", "&have=" + tag.substr(1, tag.size() - 2));
  EXPECT_EQ(changed.status, 200);
  EXPECT_NE(changed.headers.at("ETag"), tag);
  for (const char* wrong :
       {"nothing?wallpaper=light&scale=1&revision=1", "home?wallpaper=grey&scale=1&revision=1",
        "home?wallpaper=light&scale=9&revision=1", "home?wallpaper=light&scale=1"})
    EXPECT_EQ(get(std::string("picture/") + wrong).status, 400) << wrong;
}

TEST_F(StudioTheme, PicturesStayWithTheTheme) {
  write("");
  start({file()});
  EXPECT_EQ(
      request("PUT", path + "material/wallpaper/light", ownHost(), flat({0x12, 0xb4, 0x57})).status,
      200);
  EXPECT_TRUE(hasColor(picture("home").body, 0x12b457));
  EXPECT_EQ(
      request("PUT", path + "material/icon/com.example.notes", ownHost(), flat({1, 2, 3})).status,
      200);
  EXPECT_TRUE(hasColor(picture("home").body, 0x010203));
  for (const char* body : {"", "text", "\x89PNG\r\n\x1a\n", "\xff\xd8\xff"})
    EXPECT_EQ(request("PUT", path + "material/cover", ownHost(), body).status, 400);
  EXPECT_EQ(request("PUT", path + "material/wallpaper/blue", ownHost(), flat({1, 2, 3})).status,
            400);
  command->signal(SIGTERM);
  command->wait();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file() + ".materials"), {}), 3);
  start({file()});
  EXPECT_TRUE(hasColor(picture("home").body, 0x12b457));
  EXPECT_EQ(request("DELETE", path + "material/wallpaper/light", ownHost()).status, 200);
  EXPECT_FALSE(hasColor(picture("home").body, 0x12b457));
  EXPECT_EQ(request("DELETE", path + "material/wallpaper/light", ownHost()).status, 400);
  // It may come back, until the studio ends.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file() + ".materials"), {}), 3);
  EXPECT_EQ(post("history", {{"position", 0}}).json()["materials"].size(), 2U);
  EXPECT_TRUE(hasColor(picture("home").body, 0x12b457));
  EXPECT_EQ(post("history", {{"position", 1}}).json()["materials"].size(), 1U);
  command->signal(SIGTERM);
  command->wait();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file() + ".materials"), {}), 2);
}

TEST_F(StudioTheme, PicturesAreStepsOfTheHistory) {
  write("");
  start({file()});
  auto put = [&](const std::array<std::uint8_t, 3>& color) {
    return request("PUT", path + "material/wallpaper/light", ownHost(), flat(color)).json();
  };
  put({0x12, 0xb4, 0x57});
  change({{"global_color", "#010203"}}, theme()["revision"]);
  const Json last = put({0x7a, 0x1f, 0xc3});
  EXPECT_EQ(last["history"], (Json{"", "Light wallpaper", "", "Light wallpaper"}));
  EXPECT_TRUE(hasColor(picture("home").body, 0x7a1fc3));
  const Json before = post("history", {{"position", 2}}).json();
  EXPECT_EQ(before["values"]["global_color"], "#010203");
  EXPECT_TRUE(hasColor(picture("home").body, 0x12b457));
  post("history", {{"position", 0}});
  EXPECT_EQ(theme()["materials"], Json::object());
  EXPECT_FALSE(hasColor(picture("home").body, 0x12b457));
  EXPECT_EQ(post("history", {{"position", 4}}).status, 404);
  // The newest one again, though its file has gone meanwhile: the sample is there.
  std::filesystem::remove_all(file() + ".materials");
  EXPECT_EQ(post("history", {{"position", 3}}).status, 200);
  EXPECT_EQ(theme()["materials"], Json::object());
  EXPECT_EQ(picture("home").status, 200);
}

TEST_F(StudioTheme, OrphanedPicturesAreRemoved) {
  write("");
  start({file()});
  request("PUT", path + "material/cover", ownHost(), flat({1, 2, 3}));
  request("DELETE", path + "material/cover", ownHost());
  command->signal(SIGKILL);
  command->wait();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file() + ".materials"), {}), 2);
  start({file()});
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file() + ".materials"), {}), 1);
}

TEST_F(StudioTheme, IsComparedWithAnotherOne) {
  write(color("global_color", "#1e88e5"));
  start({file()});
  const std::string other = "application?wallpaper=light&scale=1&other=1&revision=";
  EXPECT_EQ(get("picture/" + other + "1").status, 400) << "there is none yet";
  auto shows = [&](const Reply& chosen, unsigned rgb) {
    EXPECT_EQ(chosen.status, 200) << chosen.body;
    const long revision = chosen.json()["revision"];
    EXPECT_TRUE(hasColor(get("picture/" + other + std::to_string(revision)).body, rgb)) << rgb;
    EXPECT_TRUE(hasColor(picture("application").body, 0x1e88e5)) << "the theme itself stays";
  };
  shows(post("other", {{"preset", "Meadow"}}), 0x2f9e44);
  const std::string list = "<plist><dict>" + color("global_color", "#12b457") + "</dict></plist>";
  shows(request("PUT", path + "other", ownHost(), list), 0x12b457);
  change({{"global_color", "#7a1fc3"}}, 1);
  change({{"global_color", "#1e88e5"}}, 2);
  shows(post("other", {{"position", 1}}), 0x7a1fc3);
  EXPECT_TRUE(becomes("/isSaved", true));
  shows(post("other", {{"saved", true}}), 0x1e88e5);
  for (const Json& wrong : {Json{{"preset", "None"}}, Json{{"preset", 1}}, Json{{"position", 99}},
                            Json{{"saved", false}}, Json::object(), Json::array()})
    EXPECT_EQ(post("other", wrong).status, 400) << wrong;
  for (const char* wrong : {"", "text", "<plist><array/></plist>"})
    EXPECT_EQ(request("PUT", path + "other", ownHost(), wrong).status, 400) << wrong;
  start();
  EXPECT_EQ(post("other", {{"saved", true}}).status, 400) << "there is no file";
}

TEST_F(StudioTheme, SaysHowWellItCanBeRead) {
  write(color("global_color", "#000000"));
  start({file()});
  const Json measured = get("contrast?plays=0&front=0").json();
  EXPECT_EQ(measured["revision"], 1);
  const auto rowOf = [](const Json& all, const std::string& name) {
    for (const Json& row : all["rows"]) {
      if (row["class"] == name) return row;
    }
    return Json();
  };
  const Json volume = rowOf(measured, "SBHUDView");
  EXPECT_EQ(volume["wallpaper"], "dark");
  EXPECT_LT(volume["ratio"], 2);
  EXPECT_EQ(volume["holds"], false);
  const Json advice =
      get("advice?process=com.apple.springboard&surface=SBHUDView%20colorTint").json()["changes"];
  ASSERT_TRUE(advice.is_object()) << advice;
  EXPECT_EQ(advice["volume_color_type"], 2);
  change(advice, 1);
  const Json after = get("contrast?plays=0&front=0").json();
  EXPECT_EQ(after["revision"], 2);
  EXPECT_EQ(rowOf(after, "SBHUDView")["holds"], true);
  EXPECT_EQ(rowOf(after, "SBControlCenterContentContainerView"),
            rowOf(measured, "SBControlCenterContentContainerView"));
  EXPECT_EQ(get("advice?process=a&surface=b").status, 400);
}

TEST_F(StudioTheme, ForeignMaterialsAreLeftOut) {
  write("");
  std::filesystem::create_directory(file() + ".materials");
  std::ofstream(folder.path() + "/abc.png") << "x";
  std::ofstream(file() + ".materials/materials.json")
      << R"({"cover": "../abc.png", "wallpaper/light": "/etc/passwd", "icon/../x": "a.png", "x": 1})";
  start({file()});
  EXPECT_EQ(theme()["materials"], Json::object());
  EXPECT_EQ(picture("home").status, 200);
}

TEST_F(StudioTheme, ColoursComeFromAPicture) {
  start();
  const Reply picked = request("POST", path + "pick", ownHost(), flat({0x12, 0xb4, 0x57}));
  EXPECT_EQ(picked.status, 200);
  EXPECT_EQ(picked.json()["average"].get<std::string>().substr(0, 7), "#12b457");
  EXPECT_FALSE(picked.json().contains("file"));
  // More often than there are processes to ask, which are free again after a failure too.
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(request("POST", path + "pick", ownHost(), "no picture").status, 400);
    EXPECT_EQ(request("POST", path + "pick", ownHost(), flat({0x12, 0xb4, 0x57})).status, 200);
  }
}

TEST_F(StudioTheme, IsExportedAsASettingsFile) {
  start();
  change({{"global_color", "#12b457"}}, 1);
  const std::string exported = folder.path() + "/exported.plist";
  std::ofstream(exported) << get("export").body;
  EXPECT_EQ(test::varnix({"settings", "check", exported}).out, "");
  EXPECT_NE(test::contentsOf(exported).find("#12b457"), std::string::npos);
}

}  // namespace
