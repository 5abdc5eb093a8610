// What loading the library does: marks, gates, the installation table, log lines.
#include <sys/wait.h>
#include <unistd.h>

#include <span>

#include "support/encodings.h"
#include "support/recorded.h"
#include "support/springboard.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;
using host::ProcessKind;

/// The installed groups, one line for each method.
Lines hooks(char sign, const std::vector<std::string>& methods) {
  Lines lines;
  for (const auto& method : methods)
    lines.push_back(std::string("hook ") + sign + "[" + method + "]");
  return lines;
}
Lines interfaceGroup() {
  return hooks('-', {"UIStatusBarNewUIStyleAttributes "
                     "initWithRequest:backgroundColor:foregroundColor:",
                     "UIView tintColor", "UIView setTintColor:", "UISwitch layoutSubviews",
                     "UISwitch setOnTintColor:", "UISwitch setTintColor:",
                     "UIKeyboard initWithFrame:", "UIKBRenderConfig lightKeyboard"});
}
Lines instagramGroup() {
  return hooks('-', {"IGStringStyle linkColor", "IGStringStyle setLinkColor:"});
}
Lines messagesGroup() { return hooks('-', {"CKGradientView colors"}); }
Lines twitterGroup() {
  return hooks('+', {"UIColor twitterColorTextLink", "UIColor twitterColorTextUsername",
                     "UIColor twitterColorTextTimestamp", "UIColor twitterColorTextSocial",
                     "UIColor twitterColorTextLinkSubtle", "UIColor twitterColorActivityTitle",
                     "UIColor twitterColorChangeTrendsLocationText"});
}
Lines springBoardGroup() {
  return {"add -[SBControlCenterContentContainerView colorBackdrop] v@:",
          "hook -[SBControlCenterContentContainerView _accessibilityBackgroundContrastDidChange:]",
          "hook -[SBControlCenterContentContainerView controlCenterWillPresent]",
          "hook -[SBControlCenterContentContainerView _updateBackground]",
          "hook -[SBControlCenterContentContainerView initWithFrame:]",
          "add -[SBControlCenterContentContainerView dyeTrackChanged:] v@:@",
          "hook -[SBControlCenterContentContainerView dealloc]",
          "add -[SBNotificationCenterViewController colorBackdrop] v@:",
          "hook -[SBNotificationCenterViewController hostWillPresent]",
          "hook -[SBNotificationCenterViewController initWithNibName:bundle:]",
          "add -[SBNotificationCenterViewController dyeTrackChanged:] v@:@",
          "hook -[SBNotificationCenterViewController dealloc]",
          "hook -[SBNotificationCenterViewController _backgroundContrastDidChange:]",
          "hook -[SBFolderIconBackgroundView setWallpaperColor:phase:]",
          "hook -[SBIconBlurryBackgroundView setWallpaperColor:phase:]",
          "hook -[SBIconBlurryBackgroundView "
          "setWallpaperBackgroundRect:forContents:withFallbackColor:]",
          "hook +[SBIconBadgeView _checkoutBackgroundImage]",
          "hook -[SBHUDView layoutSubviews]"};
}
Lines operator+(Lines a, const Lines& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

/// A class that may be missing: the line of its group, and the methods that are replaced in it.
struct Missable {
  const char* name;
  int line;
  int methods;
};
constexpr Missable kInterface[] = {{"UIStatusBarNewUIStyleAttributes", 910, 1},
                                   {"UISwitch", 910, 3},
                                   {"UIKeyboard", 910, 1},
                                   {"UIKBRenderConfig", 910, 1}};
constexpr Missable kInstagram[] = {{"IGStringStyle", 913, 2}};
constexpr Missable kMessages[] = {{"CKGradientView", 916, 1}};
constexpr Missable kTwitter[] = {{"UIColor", 919, 7}};
constexpr Missable kSpringBoard[] = {{"SBControlCenterContentContainerView", 938, 5},
                                     {"SBNotificationCenterViewController", 938, 4},
                                     {"SBFolderIconBackgroundView", 938, 1},
                                     {"SBIconBlurryBackgroundView", 938, 2},
                                     {"SBIconBadgeView", 938, 1},
                                     {"SBHUDView", 938, 1}};

Lines logLines(const Missable& missing) {
  return Lines(static_cast<std::size_t>(missing.methods),
               "3 [Varnix2: Tweak:" + std::to_string(missing.line) + "] ERROR: logos: nil class " +
                   missing.name);
}

/// A process, with what is installed there if nothing is missing, and what may be missing.
struct Process {
  const char* bundle;
  ProcessKind kind;
  Lines installed;
  std::span<const Missable> own;
};

class Startup : public test::SpringBoard {
 protected:
  static Lines marks() {
    return {"add -[UIColor isVarnixColor] B@:", "add -[UIColor setIsVarnixColor:] v@:B",
            "add -[UIColor isVarnixAlbumColor] B@:", "add -[UIColor setIsVarnixAlbumColor:] v@:B"};
  }
  static Lines measures() {
    const std::string number = nativeEncoding("d@:");
    Lines lines;
    for (const char* name : {"hue", "saturation", "brightness", "alpha"})
      lines.push_back("add -[UIColor " + std::string(name) + "] " + number);
    for (const char* name : {"y", "u", "v"})
      lines.push_back("add +[UIColor " + std::string(name) + "ComponentFromColor:] f@:@");
    for (const char* name : {"", "Square"}) {
      lines.push_back("add +[UIColor YUVSpace" + std::string(name) +
                      "DistanceToColor:fromColor:] f@:@@");
    }
    return lines;
  }
  static Lines everything() { return marks() + measures() + interfaceGroup(); }
  static std::vector<Process> processes() {
    return {{"com.apple.springboard", ProcessKind::springboard, everything() + springBoardGroup(),
             kSpringBoard},
            {"com.burbn.instagram", ProcessKind::application, everything() + instagramGroup(),
             kInstagram},
            {"com.apple.MobileSMS", ProcessKind::application, everything() + messagesGroup(),
             kMessages},
            {"com.atebits.Tweetie2", ProcessKind::application, everything() + twitterGroup(),
             kTwitter}};
  }
  /// Runs the check in a separate process, since a library is loaded only once.
  static void inChild(const std::function<bool()>& check) {
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) _exit(check() ? 0 : 1);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  /// Starts the process without those classes. True if each is logged, once for each method and in
  /// order, and everything else is installed.
  bool onlyLacks(const Process& process, const std::vector<Missable>& missing) {
    settings("");
    std::vector<std::string> names;
    Lines rest = process.installed;
    Lines logged;
    for (const Missable& one : missing) {
      names.emplace_back(one.name);
      logged = logged + logLines(one);
      std::erase_if(rest, [&](const std::string& line) {
        return line.find(std::string("[") + one.name + " ") != std::string::npos;
      });
    }
    start(process.bundle, process.kind, {}, names);
    load();
    EXPECT_EQ(installed, rest);
    EXPECT_EQ(log(), logged);
    return !HasFailure();
  }
};

TEST_F(Startup, InstallsTheTableInOrder) {
  application("");
  EXPECT_EQ(installed, everything());
  EXPECT_EQ(log(), Lines());
}

TEST_F(Startup, InstallsTheGroupsOfEachProcess) {
  for (const Process& process : processes()) {
    SCOPED_TRACE(process.bundle);
    inChild([&] { return onlyLacks(process, {}); });
  }
}

TEST_F(Startup, InstallsBalloonsWhereverTheirClassIs) {
  settings("");
  startSpringBoard();
  const auto frameworks =
      std::filesystem::path(host::defaultLibraryPath()).parent_path() / "Frameworks";
  ASSERT_NE(dlopen((frameworks / "ChatKit.so").c_str(), RTLD_NOW), nullptr);
  load();
  EXPECT_EQ(installed, everything() + messagesGroup() + springBoardGroup());
}

TEST_F(Startup, ANamedApplicationsGroupIsNobodyElses) {
  settings("");
  start("com.example.app");
  const auto frameworks =
      std::filesystem::path(host::defaultLibraryPath()).parent_path() / "Frameworks";
  for (const char* name : {"Instagram.so", "Twitter.so"})
    ASSERT_NE(dlopen((frameworks / name).c_str(), RTLD_NOW), nullptr);
  load();
  EXPECT_EQ(installed, everything());
}

TEST_F(Startup, InstallsBalloonsBeforeANamedApplicationsGroupAndAfterAnothers) {
  const auto groups = [&](const char* bundle) {
    settings("");
    start(bundle);
    const auto frameworks =
        std::filesystem::path(host::defaultLibraryPath()).parent_path() / "Frameworks";
    EXPECT_NE(dlopen((frameworks / "ChatKit.so").c_str(), RTLD_NOW), nullptr);
    load();
    return installed;
  };
  inChild([&] {
    return groups("com.atebits.Tweetie2") == everything() + messagesGroup() + twitterGroup();
  });
  inChild([&] {
    return groups("com.burbn.instagram") == everything() + instagramGroup() + messagesGroup();
  });
}

Lines* order = nullptr;

template <objc::FixedString Name, class... A>
struct Noted {
  static inline constinit objc::Hook<objc::Message<NSObject, Name, NSObject*(A...)>{}> hook;
  static NSObject* note(NSObject* self, SEL cmd, A... arguments) {
    order->emplace_back(Name.text);
    return hook.original(self, cmd, arguments...);
  }
  static void install(Class cls) { hook.template install<&note>(cls, objc::Selector<Name>::get()); }
};

TEST_F(Startup, ListensToTheTrackBeforeSpringBoardsGroup) {
  installNowPlaying();
  settings(boolEntry("use_album_art", true));
  startSpringBoard();
  loadNowPlaying();
  Class controller = objc_getClass("MPUNowPlayingController");
  Noted<"init">::install(controller);
  Noted<"setDelegate:", NSObject*>::install(controller);
  Noted<"startUpdating">::install(controller);
  installed.clear();
  order = &installed;
  load();
  const Lines made = {"init", "setDelegate:", "startUpdating"};
  EXPECT_EQ(installed, everything() + made + springBoardGroup());
}

TEST_F(Startup, WithoutAlbumArtNoControllerIsMade) {
  installNowPlaying();
  settings(boolEntry("use_album_art", false));
  startSpringBoard();
  load();
  EXPECT_EQ(objc_getClass("MPUNowPlayingController"), nullptr);
  EXPECT_EQ(installed, everything() + springBoardGroup());
}

TEST_F(Startup, ExcludedOrSwitchedOffSpringBoardKeepsEverything) {
  for (const char* key : {"enabled", "com.apple.springboard_enabled"}) {
    inChild([&] {
      installNowPlaying();
      settings(boolEntry(key, false) + boolEntry("use_album_art", true));
      startSpringBoard();
      load();
      return installed == marks() && log().empty() &&
             objc_getClass("MPUNowPlayingController") == nullptr;
    });
    std::filesystem::remove_all(folder.path() + "/System");
  }
}

TEST_F(Startup, InstallsItInAProcessWithoutABundle) {
  settings("");
  start({});
  load();
  EXPECT_EQ(installed, everything());
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), "#de3027ff");
}

TEST_F(Startup, SwitchedOffOnlyMarksAndManagesColors) {
  application("<key>enabled</key><false/>");
  EXPECT_EQ(installed, marks());
  EXPECT_EQ(log(), Lines());
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), "#007affff");
  EXPECT_EQ(hex(send<UIColor*>(manager(), "dye"_sel)), "#de3027ff");
}

TEST_F(Startup, AnExcludedApplicationStaysAsItIs) {
  application("<key>com.example.app_enabled</key><false/>");
  EXPECT_EQ(installed, marks());
}

TEST_F(Startup, AnotherApplicationsExclusionDoesNotMatter) {
  application(
      "<key>com.example.other_enabled</key><false/><key>com.example.app_enabled</key><true/>");
  EXPECT_EQ(installed, everything());
}

TEST_F(Startup, AProcessWithoutABundleIsExcludedUnderTheNameOfNil) {
  settings("<key>(null)_enabled</key><false/>");
  start({});
  load();
  EXPECT_EQ(installed, marks());
}

TEST_F(Startup, TheWebContentProcessIsLeftAlone) {
  settings("<key>com.apple.WebKit.WebContent_enabled</key><true/><key>enabled</key><true/>");
  start("com.apple.WebKit.WebContent");
  load();
  EXPECT_EQ(installed, marks());
}

TEST_F(Startup, ADaemonWithoutUIKitLogsNothing) {
  settings("");
  start("com.example.daemon", host::ProcessKind::daemon);
  load();
  EXPECT_EQ(installed, Lines());
  EXPECT_EQ(log(), Lines());
  EXPECT_NE(objc_getClass("VNXManager"), nullptr);
  EXPECT_TRUE(send<bool>(manager(), "tweakEnabled"_sel));
  EXPECT_EQ(send<UIColor*>(manager(), "dye"_sel), nullptr);
}

TEST_F(Startup, AHiddenUIViewSkipsTheGroupSilently) {
  settings("");
  start("com.example.app", host::ProcessKind::application, {}, {"UIView"});
  load();
  EXPECT_EQ(installed, marks() + measures());
  EXPECT_EQ(log(), Lines());
}

TEST_F(Startup, EveryMissingClassIsOneLineAMethodAndTheRestIsInstalled) {
  for (const Process& process : processes()) {
    std::vector<Missable> classes(std::begin(kInterface), std::end(kInterface));
    classes.insert(classes.end(), process.own.begin(), process.own.end());
    for (const Missable& missing : classes) {
      SCOPED_TRACE(std::string(process.bundle) + " without " + missing.name);
      inChild([&] { return onlyLacks(process, {missing}); });
    }
  }
}

TEST_F(Startup, AllMissingAtOnceAreLoggedInOrder) {
  for (const Process& process : processes()) {
    SCOPED_TRACE(process.bundle);
    std::vector<Missable> classes(std::begin(kInterface), std::end(kInterface));
    classes.insert(classes.end(), process.own.begin(), process.own.end());
    inChild([&] { return onlyLacks(process, classes); });
  }
}

TEST_F(Startup, WithoutViewsTheOtherGroupsAreStillInstalled) {
  for (Process process : processes()) {
    SCOPED_TRACE(process.bundle);
    inChild([&] {
      settings("");
      start(process.bundle, process.kind, {}, {"UIView"});
      load();
      const auto group = process.installed.begin() + 4 + 9;
      process.installed.erase(group, group + 8);
      EXPECT_EQ(installed, process.installed);
      EXPECT_EQ(log(), Lines());
      return !HasFailure();
    });
  }
}

TEST_F(Startup, WithoutABalloonThereIsNoGroupAndNoLine) {
  settings("");
  start("com.apple.MobileSMS", ProcessKind::application, {}, {"CKColoredBalloonView"});
  load();
  EXPECT_EQ(installed, everything());
  EXPECT_EQ(log(), Lines());
}

TEST_F(Startup, ADaemonWithAnApplicationsIdentityLogsItsGroup) {
  Lines springBoard;
  for (const Missable& missing : kSpringBoard) springBoard = springBoard + logLines(missing);
  const std::pair<const char*, Lines> daemons[] = {
      {"com.atebits.Tweetie2", Lines(7, "3 [Varnix2: Tweak:919] ERROR: logos: nil class UIColor")},
      {"com.burbn.instagram", logLines(kInstagram[0])},
      {"com.apple.MobileSMS", {}},
      {"com.apple.springboard", springBoard}};
  for (const auto& daemon : daemons) {
    SCOPED_TRACE(daemon.first);
    inChild([&] {
      const auto& [bundle, lines] = daemon;
      settings("");
      start(bundle, ProcessKind::daemon);
      load();
      EXPECT_EQ(installed, Lines());
      EXPECT_EQ(log(), lines);
      return !HasFailure();
    });
  }
}

TEST_F(Startup, AHiddenUIColorGetsNoMarks) {
  settings("");
  start("com.example.app", host::ProcessKind::application, {}, {"UIColor"});
  load();
  EXPECT_EQ(installed.size(), everything().size() - 4 - 9);
}

TEST_F(Startup, TheLibrarysClassesExistInAProcessThatIsNotDyed) {
  application("<key>enabled</key><false/>");
  for (const char* name : {"KTPrefsManager", "VXPrefsManager", "VNXManager"}) {
    EXPECT_NE(objc_getClass(name), nullptr) << name;
  }
  EXPECT_STREQ(class_getName(class_getSuperclass(objc_getClass("VXPrefsManager"))),
               "KTPrefsManager");
}

TEST_F(Startup, AnExistingMarkMethodStays) {
  settings("");
  start("com.example.app");
  static auto always = +[](NSObject*, SEL) { return true; };
  class_addMethod(objc_getClass("UIColor"), sel_registerName("isVarnixColor"),
                  reinterpret_cast<IMP>(always), "B@:");
  load();
  EXPECT_TRUE(send<bool>(rgb(0, 0, 0), "isVarnixColor"_sel));
}

// The platform's two booleans are never freed.
TEST_F(Startup, MarksAreNotRetained) {
  application("");
  UIColor* color = rgb(0, 0, 0);
  NSNumber* yes = NSNumber::numberWithBool(true);
  test::Recorded<"retain", NSObject*()>::install(yes->isa);
  objc_retain(yes);
  ASSERT_EQ(test::calls().size(), 1U);
  send<void>(color, "setIsVarnixColor:"_sel, true);
  send<void>(color, "setIsVarnixAlbumColor:"_sel, true);
  EXPECT_EQ(test::calls().size(), 1U);
}

TEST_F(Startup, MarksReadNoUntilTheyAreSet) {
  application("");
  UIColor* color = rgb(0, 0, 0);
  EXPECT_FALSE(send<bool>(color, "isVarnixColor"_sel));
  EXPECT_FALSE(send<bool>(color, "isVarnixAlbumColor"_sel));
  send<void>(color, "setIsVarnixColor:"_sel, true);
  EXPECT_TRUE(send<bool>(color, "isVarnixColor"_sel));
  EXPECT_FALSE(send<bool>(color, "isVarnixAlbumColor"_sel));
  send<void>(color, "setIsVarnixAlbumColor:"_sel, true);
  send<void>(color, "setIsVarnixColor:"_sel, false);
  EXPECT_FALSE(send<bool>(color, "isVarnixColor"_sel));
  EXPECT_TRUE(send<bool>(color, "isVarnixAlbumColor"_sel));
  // The key is the getter's selector, and the value a boolean object.
  auto* value = static_cast<NSNumber*>(
      objc_getAssociatedObject(color, sel_registerName("isVarnixAlbumColor")));
  EXPECT_EQ(value, NSNumber::numberWithBool(true));
}

TEST_F(Startup, GatesAskTheManagerThatWasJustMade) {
  settings("<key>enabled</key><string>no</string>");
  start("com.example.app");
  load();
  EXPECT_EQ(installed, marks());
}

}  // namespace
