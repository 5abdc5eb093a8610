// The wallpaper behind folders and icons, and what replaces it.
#include <cmath>
#include <cstring>
#include <limits>

#include "support/pictures.h"
#include "support/springboard.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

const std::string kGlobal = stringEntry("global_color", "#336699");
const std::string kOwn = stringEntry("folder_color", "#804020:0.25");
std::string folderType(int type) { return integerEntry("folder_color_type", type); }

std::string hex(CGColorRef color) {
  return test::hex(send<UIColor*>(objc_getClass("UIColor"), "colorWithCGColor:"_sel, color));
}
CGColorRef red() { return send<CGColorRef>(rgb(1, 0, 0), "CGColor"_sel); }

UIColor* noColor(NSObject*, SEL) { return nullptr; }
void leaveWithoutColor(const char* selector) {
  class_replaceMethod(objc_getClass("VNXManager"), sel_registerName(selector),
                      reinterpret_cast<IMP>(&noColor), "@@:");
}

class Icons : public test::SpringBoard {
 protected:
  void board(const std::string& entries) {
    settings(entries);
    startSpringBoard();
    load();
  }
  static void noteQuestions() {
    Class managerClass = objc_getClass("VNXManager");
    Recorded<"folderEnabled", NSInteger()>::install(managerClass);
    Recorded<"folderDye", UIColor*()>::install(managerClass);
    Recorded<"dye", UIColor*()>::install(managerClass);
  }
};

// --- wallpaper colours ---------------------------------------------------------------------------

constexpr CGPoint kPhase{-3.25, 1e9};

void setWallpaper(NSObject* view, CGColorRef color, CGPoint phase = kPhase) {
  send<void>(view, "setWallpaperColor:phase:"_sel, color, phase);
}
CGColorRef wallpaper(NSObject* view) { return send<CGColorRef>(view, "wallpaperColor"_sel); }
CGPoint phase(NSObject* view) { return send<CGPoint>(view, "wallpaperPhase"_sel); }

class Wallpaper : public Icons, public testing::WithParamInterface<const char*> {
 protected:
  static Strong<NSObject> make() { return framed(GetParam()); }
};

TEST_P(Wallpaper, ThatIsOffIsPassedOn) {
  board(kGlobal + kOwn + folderType(1));
  auto view = make();
  CGColorRef given = red();
  setWallpaper(view, given);
  EXPECT_EQ(wallpaper(view), given);
  EXPECT_EQ(phase(view).x, kPhase.x);
  EXPECT_EQ(phase(view).y, kPhase.y);
  setWallpaper(view, nullptr);
  EXPECT_EQ(wallpaper(view), nullptr);
}

TEST_P(Wallpaper, HasTheFoldersColorAtSixTenths) {
  board("");
  const std::pair<int, const char*> kColors[] = {
      {0, "#33669999"}, {2, "#80402099"}, {3, "#33669999"}, {-1, "#33669999"}};
  for (const auto& [type, expected] : kColors) {
    settingsNow(kGlobal + kOwn + folderType(type));
    auto view = make();
    setWallpaper(view, red());
    EXPECT_EQ(hex(wallpaper(view)), expected) << type;
    EXPECT_EQ(phase(view).x, kPhase.x);
    EXPECT_EQ(phase(view).y, kPhase.y);
    setWallpaper(view, nullptr, {0, -0.0});
    EXPECT_EQ(hex(wallpaper(view)), expected) << type;
    EXPECT_TRUE(std::signbit(phase(view).y));
  }
}

TEST_P(Wallpaper, HasItWhereNothingIsStored) {
  board("");
  auto view = make();
  setWallpaper(view, red(), {std::numeric_limits<CGFloat>::quiet_NaN(), 0});
  EXPECT_EQ(hex(wallpaper(view)), "#de302799");
  EXPECT_TRUE(std::isnan(phase(view).x));
}

TEST_P(Wallpaper, FollowsNeitherIconNorAlbum) {
  installNowPlaying();
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  load();
  settingsNow(kGlobal + boolEntry("use_album_art", true) + integerEntry("global_color_type", 1) +
              cachedIconColor("com.example.open", "#8000ffff"));
  setTrack(plainPicture(0x64, 0x64, 0xc8), true);
  open("com.example.open"_ns);
  auto view = make();
  setWallpaper(view, red());
  EXPECT_EQ(hex(wallpaper(view)), "#33669999");
}

TEST_P(Wallpaper, IsNoneWithoutAColor) {
  board(kGlobal);
  leaveWithoutColor("folderDye");
  auto view = make();
  setWallpaper(view, red());
  EXPECT_EQ(wallpaper(view), nullptr);
}

/// A folder's background inherits the method. If the injection framework looks originals up at each
/// call, its call also passes through the other class's replacement.
Lines askedBy(const std::string& className, const Lines& asked) {
  Lines all = asked;
  all.push_back("setWallpaperColor:phase:");
  if (className == "SBFolderIconBackgroundView" &&
      host::runtime::hooking() == host::runtime::Hooking::dynamic)
    all.insert(all.end(), asked.begin(), asked.end());
  return all;
}

TEST_P(Wallpaper, AsksAnewEachTimeAndPassesOnOnce) {
  settings(kGlobal + folderType(0));
  startSpringBoard();
  Recorded<"setWallpaperColor:phase:", void(CGColorRef, CGPoint)>::install(
      objc_getClass(GetParam()));
  load();
  noteQuestions();
  auto view = make();
  const Lines asked = {"folderEnabled", "folderDye", "folderEnabled", "dye"};
  const Lines dyed = askedBy(GetParam(), asked);
  for (int i = 0; i < 2; ++i) {
    calls().clear();
    setWallpaper(view, red());
    EXPECT_EQ(calls(), dyed);
  }
  settingsNow(kGlobal + folderType(1));
  calls().clear();
  setWallpaper(view, red());
  EXPECT_EQ(calls(), askedBy(GetParam(), {"folderEnabled"}));
}

TEST_P(Wallpaper, ChangesWhenItIsSetNext) {
  board(kGlobal);
  auto view = make();
  setWallpaper(view, red());
  settingsNow(kOwn + folderType(2));
  EXPECT_EQ(hex(wallpaper(view)), "#33669999");
  setWallpaper(view, red());
  EXPECT_EQ(hex(wallpaper(view)), "#80402099");
}

TEST_P(Wallpaper, OutlivesThePoolOfItsColor) {
  board(kGlobal);
  auto view = make();
  {
    objc::AutoreleasePool pool;
    setWallpaper(view, red());
  }
  EXPECT_EQ(hex(wallpaper(view)), "#33669999");
}

INSTANTIATE_TEST_SUITE_P(Behind, Wallpaper,
                         testing::Values("SBFolderIconBackgroundView",
                                         "SBIconBlurryBackgroundView"),
                         [](const auto& view) { return std::string(view.param); });

// --- pieces of wallpaper -------------------------------------------------------------------------

class Blurry : public Icons {
 protected:
  static constexpr CGRect kRect{{-1, 2.5}, {1e6, -4}};

  static void setBackground(NSObject* view, NSObject* contents, CGColorRef fallback) {
    send<void>(view, "setWallpaperBackgroundRect:forContents:withFallbackColor:"_sel, kRect,
               contents, fallback);
    const auto rect = send<CGRect>(view, "wallpaperBackgroundRect"_sel);
    EXPECT_EQ(std::memcmp(&rect, &kRect, sizeof rect), 0);
  }
  static NSObject* contents(NSObject* view) {
    return send<NSObject*>(view, "wallpaperContents"_sel);
  }
  static CGColorRef fallback(NSObject* view) { return send<CGColorRef>(view, "fallbackColor"_sel); }
};

TEST_F(Blurry, ThatIsOffIsPassedOn) {
  board(kGlobal + kOwn + folderType(1));
  auto view = framed("SBIconBlurryBackgroundView");
  auto* snippet = make<NSObject>("NSObject");
  CGColorRef given = red();
  setBackground(view, snippet, given);
  EXPECT_EQ(contents(view), snippet);
  EXPECT_EQ(fallback(view), given);
  setBackground(view, nullptr, nullptr);
  EXPECT_EQ(contents(view), nullptr);
  EXPECT_EQ(fallback(view), nullptr);
}

TEST_F(Blurry, LosesItsContentsForTheFoldersColor) {
  board("");
  auto view = framed("SBIconBlurryBackgroundView");
  const std::pair<int, const char*> kColors[] = {
      {0, "#33669999"}, {2, "#80402099"}, {7, "#33669999"}};
  for (const auto& [type, expected] : kColors) {
    settingsNow(kGlobal + kOwn + folderType(type));
    setBackground(view, make<NSObject>("NSObject"), red());
    EXPECT_EQ(contents(view), nullptr);
    EXPECT_EQ(hex(fallback(view)), expected);
    setBackground(view, nullptr, nullptr);
    EXPECT_EQ(hex(fallback(view)), expected);
  }
  leaveWithoutColor("folderDye");
  setBackground(view, make<NSObject>("NSObject"), red());
  EXPECT_EQ(contents(view), nullptr);
  EXPECT_EQ(fallback(view), nullptr);
}

TEST_F(Blurry, AsksAnewEachTimeAndPassesOnOnce) {
  settings(kGlobal);
  startSpringBoard();
  Recorded<"setWallpaperBackgroundRect:forContents:withFallbackColor:",
           void(CGRect, NSObject*, CGColorRef)>::
      install(objc_getClass("SBIconBlurryBackground"
                            "View"));
  load();
  noteQuestions();
  auto view = framed("SBIconBlurryBackgroundView");
  const std::string kSetter = "setWallpaperBackgroundRect:forContents:withFallbackColor:";
  for (int i = 0; i < 2; ++i) {
    calls().clear();
    setBackground(view, nullptr, red());
    EXPECT_EQ(calls(), (Lines{"folderEnabled", "folderDye", "folderEnabled", "dye", kSetter}));
  }
  settingsNow(folderType(1));
  calls().clear();
  setBackground(view, nullptr, red());
  EXPECT_EQ(calls(), (Lines{"folderEnabled", kSetter}));
}

}  // namespace
