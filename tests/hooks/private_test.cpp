// Each private name of the platform that the library uses is left out once: what relied on it is
// skipped, the rest is installed, and SpringBoard continues.
#include <sys/wait.h>
#include <unistd.h>

#include "support/encodings.h"
#include "support/springboard.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

/// The same reason for all the methods.
Lines over(const std::string& reason, const Lines& methods) {
  Lines lines;
  for (const std::string& method : methods) lines.push_back(method + ": " + reason);
  return lines;
}
Lines operator+(Lines a, const Lines& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Lines controlCenter() {
  const std::string start = "-[SBControlCenterContentContainerView ";
  return {start + "colorBackdrop]",
          start + "_accessibilityBackgroundContrastDidChange:]",
          start + "controlCenterWillPresent]",
          start + "_updateBackground]",
          start + "initWithFrame:]",
          start + "dyeTrackChanged:]",
          start + "dealloc]"};
}
Lines notificationCenter() {
  const std::string start = "-[SBNotificationCenterViewController ";
  return {start + "colorBackdrop]",
          start + "hostWillPresent]",
          start + "initWithNibName:bundle:]",
          start + "dyeTrackChanged:]",
          start + "dealloc]",
          start + "_backgroundContrastDidChange:]"};
}
const Lines kBadge = {"+[SBIconBadgeView _checkoutBackgroundImage]"};
const Lines kHud = {"-[SBHUDView layoutSubviews]"};

/// The name that a process is started without, and the methods that the library then does not
/// replace.
struct Left {
  std::string name;
  Lines passedOver;
};

std::vector<Left> leftOut() {
  std::vector<Left> all = {
      {"-[SBControlCenterContentContainerView backdropView]",
       over("no -[SBControlCenterContentContainerView backdropView]", controlCenter())},
      {"-[SBNotificationCenterViewController backdropView]",
       over("no -[SBNotificationCenterViewController backdropView]", notificationCenter())},
      {"SBControlCenterContentContainerView._accessibilityBackgroundView",
       over("no SBControlCenterContentContainerView._accessibilityBackgroundView",
            {controlCenter()[1]})},
      {"_UIAccessibilityEnhanceBackgroundContrast",
       over("no _UIAccessibilityEnhanceBackgroundContrast", {controlCenter()[1]})},
      {"SBHUDView._backdropView", over("no SBHUDView._backdropView", kHud)},
      // These are asked about only when needed.
      {"-[SpringBoard _accessibilityFrontMostApplication]", {}},
      {"-[SBApplication bundleIdentifier]", {}},
      {"+[ALApplicationList sharedApplicationList]", {}},
      {"-[ALApplicationList iconOfSize:forDisplayIdentifier:]", {}},
      {"CFLog", {}},
      {"_CFKeyedArchiverUIDGetTypeID", {}},
      {"_CFKeyedArchiverUIDGetValue", {}},
  };
  for (const char* name :
       {"-[_UIBackdropView inputSettings]",
        "-[_UIBackdropViewSettings setRequiresColorStatistics:]",
        "-[_UIBackdropViewSettings setUsesColorTintView:]",
        "-[_UIBackdropViewSettings setColorTint:]", "-[_UIBackdropViewSettings setColorTintAlpha:]",
        "-[_UIBackdropViewSettings setColorTintMaskAlpha:]"}) {
    all.push_back(
        {name, over(std::string("no ") + name, controlCenter() + notificationCenter() + kHud)});
  }
  for (const char* name :
       {"-[SBIconAccessoryImage initWithImage:]", "-[SBIconAccessoryImage countedMapKey]",
        "-[SBIconAccessoryImage setCountedMapKey:]"}) {
    all.push_back({name, over(std::string("no ") + name, kBadge)});
  }
  // The replaced methods themselves.
  for (const std::string& name : Lines{
           controlCenter()[1], controlCenter()[2], controlCenter()[3], notificationCenter()[1],
           notificationCenter()[5], kBadge[0],
           "-[SBIconBlurryBackgroundView "
           "setWallpaperBackgroundRect:forContents:withFallbackColor:]",
           "-[UIKBRenderConfig lightKeyboard]",
           "-[UIStatusBarNewUIStyleAttributes initWithRequest:backgroundColor:foregroundColor:]"}) {
    all.push_back({name, over("the class has no such method", {name})});
  }
  return all;
}

class PrivateNames : public test::SpringBoard {
 protected:
  /// Runs the check in a separate process, since a library is loaded only once.
  static void inChild(const std::function<bool()>& check) {
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) _exit(check() ? 0 : 1);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  static bool has(NSObject* object, const char* name) {
    return class_respondsToSelector(object_getClass(object), sel_registerName(name));
  }
  /// As the platform would, if it has the method.
  static void tell(NSObject* object, const char* name) {
    if (has(object, name)) objc::sendDynamic<void>(object, sel_registerName(name));
  }
  static void tellOfContrast(NSObject* object, const char* name) {
    if (has(object, name))
      objc::sendDynamic<void>(object, sel_registerName(name), static_cast<NSObject*>(nullptr));
  }
  /// Uses everything that the library replaces in SpringBoard, once.
  void useSpringBoard() {
    open(string("com.example.open"));
    tell(controlCenter(), "controlCenterWillPresent");
    tell(controlCenter(), "_updateBackground");
    tellOfContrast(controlCenter(), "_accessibilityBackgroundContrastDidChange:");
    tell(notificationCenter(), "hostWillPresent");
    tellOfContrast(notificationCenter(), "_backgroundContrastDidChange:");
    tell(hud(), "layoutSubviews");
    if (class_respondsToSelector(objc_getMetaClass("SBIconBadgeView"),
                                 "_checkoutBackgroundImage"_sel))
      send<NSObject*>(objc_getClass("SBIconBadgeView"), "_checkoutBackgroundImage"_sel);
  }
};

TEST_F(PrivateNames, LeftOutOneByOneLeaveTheRest) {
  for (const Left& left : leftOut()) {
    SCOPED_TRACE(left.name);
    inChild([&] {
      settings(integerEntry("global_color_type", 1));
      startSpringBoard({left.name});
      load();
      useSpringBoard();
      EXPECT_EQ(passedOver(), left.passedOver);
      EXPECT_EQ(log(), Lines());
      return !HasFailure();
    });
  }
}

TEST_F(PrivateNames, OfTheTrackLeaveItAlone) {
  for (const char* name :
       {"setDelegate:", "startUpdating", "isPlaying", "currentNowPlayingArtwork"}) {
    SCOPED_TRACE(name);
    inChild([&] {
      installNowPlaying();
      settings(boolEntry("use_album_art", true));
      startSpringBoard({std::string("-[MPUNowPlayingController ") + name + "]"});
      load();
      recordSettings();
      useSpringBoard();
      EXPECT_FALSE(writes().empty());
      return !HasFailure();
    });
    std::filesystem::remove_all(folder.path() + "/System");
  }
}

// References in an archive have a private type. If they cannot be recognised, no entry is one.
TEST_F(PrivateNames, OfArchivesLeaveTheKeptColorAlone) {
  for (const char* name : {"_CFKeyedArchiverUIDGetTypeID", "_CFKeyedArchiverUIDGetValue"}) {
    SCOPED_TRACE(name);
    inChild([&] {
      settings("");
      startSpringBoard({name});
      const std::string kept = cachedIconColor("com.example.open", "#112233ff");
      settings(integerEntry("global_color_type", 1) + kept);
      load();
      recordSettings();
      open(string("com.example.open"));
      tell(controlCenter(), "controlCenterWillPresent");
      EXPECT_EQ(writes(), tinted("#de3027ff", "0.6"));
      return !HasFailure();
    });
  }
}

// A method with other argument types would get what it does not expect.
TEST_F(PrivateNames, OfOtherTypesStay) {
  struct {
    const char* className;
    const char* method;
    const char* types;
    bool agrees;
  } const cases[] = {
      {"SBControlCenterContentContainerView", "_updateBackground", "v@:@", false},
      {"SBControlCenterContentContainerView", "_updateBackground", "v@:", true},
      {"SBNotificationCenterViewController", "hostWillPresent", "v@:", true},
      {"SBNotificationCenterViewController", "hostWillPresent", "d@:", false},
      {"SBIconBlurryBackgroundView",
       "setWallpaperBackgroundRect:forContents:withFallbackColor:", "v@:{CGRect=dddd}@", false},
      {"SBIconBlurryBackgroundView", "setWallpaperColor:phase:", "v@:@{CGPoint=dd}", true},
      {"UIKBRenderConfig", "lightKeyboard", "c@:", true},
      {"UIKBRenderConfig", "lightKeyboard", "?", true},
      {"UIKBRenderConfig", "lightKeyboard", "@@:", false},
  };
  for (const auto& c : cases) {
    const std::string types = nativeEncoding(c.types);
    SCOPED_TRACE(c.method + (" " + types));
    inChild([&] {
      settings("");
      startSpringBoard({std::string("-[") + c.className + " " + c.method + "]"});
      void (*nothing)(id, SEL) = [](id, SEL) {};
      class_addMethod(objc_getClass(c.className), sel_registerName(c.method),
                      reinterpret_cast<IMP>(nothing), types.c_str());
      load();
      Lines expected;
      if (!c.agrees)
        expected = {std::string("-[") + c.className + " " + c.method + "]: its types are " + types};
      EXPECT_EQ(passedOver(), expected);
      return !HasFailure();
    });
  }
}

// A method of somebody else with a name of ours is not called with our types.
TEST_F(PrivateNames, OfOursThatAreTakenAreNotSent) {
  settings("");
  startSpringBoard();
  static int sent = 0;
  void (*other)(id, SEL, id) = [](id, SEL, id) { ++sent; };
  class_addMethod(objc_getClass("SBControlCenterContentContainerView"), "colorBackdrop"_sel,
                  reinterpret_cast<IMP>(other), "v@:@");
  class_addMethod(objc_getClass("SBNotificationCenterViewController"), "dyeTrackChanged:"_sel,
                  reinterpret_cast<IMP>(other), "v@:d");
  load();
  useSpringBoard();
  send(NSNotificationCenter::defaultCenter(), NSNotificationCenter::postNotificationName,
       string("com.quillmarsh.varnix2.track.changed"), nullptr);
  EXPECT_EQ(sent, 0);
  const Lines ours = ::controlCenter();
  EXPECT_EQ(passedOver(),
            over("the class has a method of that name", {ours[0]}) +
                over("no -[SBControlCenterContentContainerView colorBackdrop]",
                     Lines(ours.begin() + 1, ours.end())) +
                over("the class has a method of that name", {::notificationCenter()[3]}));
}

// A view of another kind in a backdrop's usual place.
TEST_F(PrivateNames, OfAnotherKindOfBackdropAreNotSent) {
  settings("");
  startSpringBoard();
  load();
  UIView* (*plain)(id, SEL) = [](id, SEL) { return make<UIView>("UIView"); };
  for (const char* name :
       {"SBControlCenterContentContainerView", "SBNotificationCenterViewController"}) {
    class_replaceMethod(objc_getClass(name), "backdropView"_sel, reinterpret_cast<IMP>(plain),
                        "@@:");
  }
  recordSettings();
  useSpringBoard();
  EXPECT_EQ(writes(), tinted("#de3027ff", "0.8")) << "the HUD's alone";
}

}  // namespace
