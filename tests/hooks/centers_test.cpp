// Control Centre and Notification Centre: when they are tinted, and which questions that takes.
#include "support/centers.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

TEST_F(Centers, ControlCenterIsTintedAfterThePlatformsWork) {
  centers("");
  send<void>(controlCenter(), "controlCenterWillPresent"_sel);
  EXPECT_EQ(calls(), (Lines{"controlCenterWillPresent", "colorBackdrop"}));
  calls().clear();
  send<void>(controlCenter(), "_updateBackground"_sel);
  EXPECT_EQ(calls(), (Lines{"_updateBackground", "colorBackdrop"}));
}

TEST_F(Centers, NotificationCenterIsTintedBeforeIt) {
  centers("");
  NSObject* center = notificationCenter();
  send<void>(center, "hostWillPresent"_sel);
  EXPECT_EQ(calls(), (Lines{"colorBackdrop", "hostWillPresent"}));
}

TEST_F(Centers, ABackgroundBuiltAnewIsTintedAnew) {
  centers("");
  NSObject* before = inputSettings(controlCenter());
  send<void>(controlCenter(), "_updateBackground"_sel);
  NSObject* after = inputSettings(controlCenter());
  EXPECT_NE(before, after);
  EXPECT_EQ(hex(send<UIColor*>(after, "colorTint"_sel)), "#de3027ff");
}

TEST_F(Centers, EveryPresentationSetsTheAlphasAgain) {
  centers("");
  for (NSObject* center : {controlCenter(), notificationCenter()}) {
    for (int i = 0; i < 2; ++i) {
      send<void>(inputSettings(center), "setColorTintAlpha:"_sel, CGFloat(0.1));
      send<void>(inputSettings(center), "setColorTintMaskAlpha:"_sel, CGFloat(0.1));
      if (center == controlCenter()) send<void>(center, "controlCenterWillPresent"_sel);
      else send<void>(center, "hostWillPresent"_sel);
      EXPECT_EQ(send<CGFloat>(inputSettings(center), "colorTintAlpha"_sel), CGFloat(0.6));
      EXPECT_EQ(send<CGFloat>(inputSettings(center), "colorTintMaskAlpha"_sel), CGFloat(0.7));
    }
  }
}

TEST_F(Centers, ASettingShowsAtTheNextPresentationOnly) {
  centers(stringEntry("global_color", "#336699"));
  send<void>(controlCenter(), "controlCenterWillPresent"_sel);
  recordSettings();
  settingsNow(stringEntry("global_color", "#804020"));
  drain();
  EXPECT_EQ(writes(), Lines());
  send<void>(controlCenter(), "controlCenterWillPresent"_sel);
  EXPECT_EQ(writes(), tinted("#804020ff", "0.6"));
  writes().clear();
  settingsNow(integerEntry("cc_color_type", 1));
  send<void>(controlCenter(), "controlCenterWillPresent"_sel);
  EXPECT_EQ(writes(), cleared());
}

TEST_F(Centers, SettingsAreFetchedBeforeEachProperty) {
  centers("");
  NSObject* center = controlCenter();
  Recorded<"backdropView", UIView*()>::install(objc_getClass(kControlCenter));
  Recorded<"inputSettings", NSObject*()>::install(objc_getClass("_UIBackdropView"));
  Class cls = objc_getClass("_UIBackdropViewSettings");
  Recorded<"setRequiresColorStatistics:", void(bool)>::install(cls);
  Recorded<"setUsesColorTintView:", void(bool)>::install(cls);
  Recorded<"setColorTint:", void(UIColor*)>::install(cls);
  Recorded<"setColorTintAlpha:", void(CGFloat)>::install(cls);
  Recorded<"setColorTintMaskAlpha:", void(CGFloat)>::install(cls);
  send<void>(center, "colorBackdrop"_sel);
  EXPECT_EQ(calls(), (Lines{"colorBackdrop", "backdropView", "inputSettings",
                            "setRequiresColorStatistics:", "inputSettings", "setUsesColorTintView:",
                            "inputSettings", "setColorTint:", "inputSettings",
                            "setColorTintAlpha:", "inputSettings", "setColorTintMaskAlpha:"}));
}

/// The questions that the manager is asked, without those that they ask one another.
class Questions : public Centers {
 protected:
  Lines asked(const std::string& entries) {
    settingsNow(entries);
    Class cls = objc_getClass("VNXManager");
    static const bool isNoted = [&] {
      Outermost<"ccEnabled", NSInteger()>::install(cls);
      Outermost<"ccDye", UIColor*()>::install(cls);
      Outermost<"useAlbumArt", bool()>::install(cls);
      Outermost<"isSpringBoard", bool()>::install(cls);
      Outermost<"wantsIconColor", bool()>::install(cls);
      Outermost<"getOpenAppId", NSString*()>::install(cls);
      return true;
    }();
    static_cast<void>(isNoted);
    calls().clear();
    send<void>(controlCenter(), "colorBackdrop"_sel);
    Lines questions(calls().begin() + 1, calls().end());
    return questions;
  }

 private:
  static inline int depth = 0;
  template <objc::FixedString Name, class Signature>
  struct Outermost;
  template <objc::FixedString Name, class R>
  struct Outermost<Name, R()> {
    static void install(Class cls) {
      hook.template install<&noted>(cls, objc::Selector<Name>::get());
    }
    static R noted(NSObject* self, SEL command) {
      if (depth++ == 0) calls().emplace_back(Name.text);
      R result = hook.original(self, command);
      --depth;
      return result;
    }
    static inline constinit objc::Hook<objc::Message<NSObject, Name, R()>{}> hook;
  };
};

TEST_F(Questions, AreAskedAnewEachTime) {
  installNowPlaying();
  centers(boolEntry("use_album_art", true));
  setTrack(nullptr, false);
  const std::string art = boolEntry("use_album_art", true);
  EXPECT_EQ(asked(integerEntry("cc_color_type", 1)), Lines{"ccEnabled"});
  EXPECT_EQ(asked(integerEntry("cc_color_type", 2)),
            (Lines{"ccEnabled", "useAlbumArt", "ccEnabled", "ccDye"}));
  EXPECT_EQ(asked(""), (Lines{"ccEnabled", "useAlbumArt", "ccEnabled", "wantsIconColor", "ccDye"}));
  EXPECT_EQ(asked(art), (Lines{"ccEnabled", "useAlbumArt", "isSpringBoard", "ccEnabled",
                               "wantsIconColor", "ccDye"}));
  EXPECT_EQ(
      asked(integerEntry("global_color_type", 1)),
      (Lines{"ccEnabled", "useAlbumArt", "ccEnabled", "wantsIconColor", "getOpenAppId", "ccDye"}));
  setTrack(nullptr, true);
  EXPECT_EQ(asked(art), (Lines{"ccEnabled", "useAlbumArt", "isSpringBoard", "ccDye"}));
}

}  // namespace
