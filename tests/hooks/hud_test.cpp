// The volume HUD: tinted at each layout, and never otherwise.
#include <algorithm>

#include "runtime/instance_variable.h"
#include "support/pictures.h"
#include "support/springboard.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

const std::string kGlobal = stringEntry("global_color", "#336699");
const std::string kVolume = stringEntry("volume_color", "#00aa55");

UIColor* noColor(NSObject*, SEL) { return nullptr; }

class Hud : public test::SpringBoard {
 protected:
  void board(const std::string& entries) {
    settings(entries);
    startSpringBoard();
    noteLayout();
  }
  void noteLayout() {
    Recorded<"layoutSubviews", void()>::install(objc_getClass("SBHUDView"));
    load();
    Recorded<"volEnabled", NSInteger()>::install(objc_getClass("VNXManager"));
    Recorded<"volDye", UIColor*()>::install(objc_getClass("VNXManager"));
    Recorded<"inputSettings", NSObject*()>::install(objc_getClass("_UIBackdropView"));
    Class inputs = objc_getClass("_UIBackdropViewSettings");
    Recorded<"setRequiresColorStatistics:", void(bool)>::install(inputs);
    Recorded<"setUsesColorTintView:", void(bool)>::install(inputs);
    Recorded<"setColorTint:", void(UIColor*)>::install(inputs);
    Recorded<"setColorTintAlpha:", void(CGFloat)>::install(inputs);
    Recorded<"setColorTintMaskAlpha:", void(CGFloat)>::install(inputs);
    recordSettings();
    calls().clear();
  }
  Lines layOut() {
    writes().clear();
    send<void>(hud(), "layoutSubviews"_sel);
    return writes();
  }
};

TEST_F(Hud, IsTintedAfterThePlatformsLayoutWithSettingsFetchedAnew) {
  board(kVolume + integerEntry("volume_color_type", 2));
  const Lines kInOrder = {"layoutSubviews", "volEnabled",
                          "inputSettings",  "setRequiresColorStatistics:",
                          "inputSettings",  "setUsesColorTintView:"};
  const Lines kStrengths = {"inputSettings", "setColorTintAlpha:", "inputSettings",
                            "setColorTintMaskAlpha:"};
  for (int i = 0; i < 2; ++i) {
    calls().clear();
    EXPECT_EQ(layOut(), tinted("#00aa55ff", "0.8"));
    const Lines& all = calls();
    ASSERT_GE(all.size(), kInOrder.size() + kStrengths.size());
    EXPECT_EQ(Lines(all.begin(), all.begin() + 6), kInOrder);
    EXPECT_EQ(Lines(all.end() - 4, all.end()), kStrengths);
    EXPECT_EQ(std::count(all.begin(), all.end(), "inputSettings"), 5);
    // Asks whether it is on, whether it has its own colour, and what that colour is.
    EXPECT_EQ(std::count(all.begin(), all.end(), "volEnabled"), 3);
    EXPECT_EQ(std::count(all.begin(), all.end(), "volDye"), 1);
  }
}

TEST_F(Hud, KeepsItsTintWhenItIsSwitchedOff) {
  board(kVolume + integerEntry("volume_color_type", 2));
  EXPECT_EQ(layOut(), tinted("#00aa55ff", "0.8"));
  settingsNow(kVolume + integerEntry("volume_color_type", 1));
  calls().clear();
  EXPECT_EQ(layOut(), Lines());
  EXPECT_EQ(calls(), (Lines{"layoutSubviews", "volEnabled"}));
  auto* backdrop = objc::instanceVariable<NSObject>(hud(), "_backdropView");
  auto* inputs = send<NSObject*>(backdrop, "inputSettings"_sel);
  EXPECT_EQ(hex(send<UIColor*>(inputs, "colorTint"_sel)), "#00aa55ff");
  EXPECT_TRUE(send<bool>(inputs, "requiresColorStatistics"_sel));
  EXPECT_TRUE(send<bool>(inputs, "usesColorTintView"_sel));
}

TEST_F(Hud, ChangesAtItsNextLayout) {
  board(kGlobal + kVolume);
  EXPECT_EQ(layOut(), tinted("#336699ff", "0.8"));
  writes().clear();
  settingsNow(kGlobal + kVolume + integerEntry("volume_color_type", 2));
  EXPECT_EQ(writes(), Lines());
  EXPECT_EQ(layOut(), tinted("#00aa55ff", "0.8"));
}

TEST_F(Hud, ShowsTheAlbumWhileItPlaysAndNoSooner) {
  installNowPlaying();
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  noteLayout();
  settingsNow(kVolume + boolEntry("use_album_art", true) + integerEntry("volume_color_type", 2));
  EXPECT_EQ(layOut(), tinted("#00aa55ff", "0.8"));
  writes().clear();
  setTrack(plainPicture(0x64, 0x64, 0xc8), true);
  host::MainRunLoop::instance().drain();
  EXPECT_EQ(writes(), Lines()) << "nothing tells it of the track";
  EXPECT_EQ(layOut(), tinted("#3030c8ff", "0.8"));
  setTrack(plainPicture(0x64, 0x64, 0xc8), false);
  EXPECT_EQ(layOut(), tinted("#00aa55ff", "0.8"));
}

TEST_F(Hud, LosesItsTintWithoutAColor) {
  board(kVolume);
  class_replaceMethod(objc_getClass("VNXManager"), "volDye"_sel, reinterpret_cast<IMP>(&noColor),
                      "@@:");
  EXPECT_EQ(layOut(), tinted("nil", "0.8"));
}

TEST_F(Hud, MayHaveNoBackdrop) {
  board(kVolume);
  auto bare = Strong<NSObject>::adopt(send<NSObject*>(objc_getClass("SBHUDView"), "alloc"_sel));
  ASSERT_EQ(objc::instanceVariable<NSObject>(bare, "_backdropView"), nullptr);
  send<void>(bare, "layoutSubviews"_sel);
  EXPECT_EQ(writes(), Lines());
  EXPECT_EQ(calls().front(), "layoutSubviews");
}

}  // namespace
