// What loading the library does: marks, gates, the installation table, log lines.
#include <sys/wait.h>
#include <unistd.h>

#include "support/hosted.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

class Startup : public Hosted {
 protected:
  static Lines marks() {
    return {"add -[UIColor isVarnixColor] B@:", "add -[UIColor setIsVarnixColor:] v@:B",
            "add -[UIColor isVarnixAlbumColor] B@:", "add -[UIColor setIsVarnixAlbumColor:] v@:B"};
  }
  static Lines everything() {
    Lines lines = marks();
    for (const char* method :
         {"UIStatusBarNewUIStyleAttributes initWithRequest:backgroundColor:foregroundColor:",
          "UIView tintColor", "UIView setTintColor:", "UISwitch layoutSubviews",
          "UISwitch setOnTintColor:", "UISwitch setTintColor:", "UIKeyboard initWithFrame:",
          "UIKBRenderConfig lightKeyboard"}) {
      lines.push_back(std::string("hook -[") + method + "]");
    }
    return lines;
  }
  static std::string missing(const char* name) {
    return std::string("3 [Varnix2: Tweak:910] ERROR: logos: nil class ") + name;
  }
};

TEST_F(Startup, InstallsTheTableInOrder) {
  application("");
  EXPECT_EQ(installed, everything());
  EXPECT_EQ(log(), Lines());
}

TEST_F(Startup, InstallsItInSpringBoard) {
  springBoard("");
  EXPECT_EQ(installed, everything());
}

TEST_F(Startup, InstallsItInAProcessWithoutABundle) {
  settings("");
  start({});
  load();
  EXPECT_EQ(installed, everything());
  EXPECT_EQ(hex(make<UIView>("UIView")->tintColor()), "#de3027ff");
}

TEST_F(Startup, SwitchedOffOnlyMarksAndManagesColors) {
  application("<key>enabled</key><false/>");
  EXPECT_EQ(installed, marks());
  EXPECT_EQ(log(), Lines());
  EXPECT_EQ(hex(make<UIView>("UIView")->tintColor()), "#007affff");
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
  EXPECT_EQ(installed, marks());
  EXPECT_EQ(log(), Lines());
}

TEST_F(Startup, EveryMissingClassIsOneLineAMethodAndTheRestIsInstalled) {
  const std::vector<std::pair<const char*, int>> classes = {{"UIStatusBarNewUIStyleAttributes", 1},
                                                            {"UISwitch", 3},
                                                            {"UIKeyboard", 1},
                                                            {"UIKBRenderConfig", 1}};
  for (const auto& [name, methods] : classes) {
    SCOPED_TRACE(name);
    // Each in a process of its own: a library is loaded once.
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
      settings("");
      start("com.example.app", host::ProcessKind::application, {}, {name});
      load();
      Lines rest;
      for (const auto& line : everything()) {
        if (line.find(std::string("[") + name + " ") == std::string::npos) rest.push_back(line);
      }
      const bool right =
          installed == rest && log() == Lines(static_cast<std::size_t>(methods), missing(name));
      _exit(right ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
}

TEST_F(Startup, AllMissingAtOnceAreLoggedInOrder) {
  settings("");
  start("com.example.app", host::ProcessKind::application, {},
        {"UIStatusBarNewUIStyleAttributes", "UISwitch", "UIKeyboard", "UIKBRenderConfig",
         "NoSuchClass"});
  load();
  EXPECT_EQ(log(), (Lines{missing("UIStatusBarNewUIStyleAttributes"), missing("UISwitch"),
                          missing("UISwitch"), missing("UISwitch"), missing("UIKeyboard"),
                          missing("UIKBRenderConfig")}));
  Lines expected = marks();
  expected.push_back("hook -[UIView tintColor]");
  expected.push_back("hook -[UIView setTintColor:]");
  EXPECT_EQ(installed, expected);
}

TEST_F(Startup, AHiddenUIColorGetsNoMarks) {
  settings("");
  start("com.example.app", host::ProcessKind::application, {}, {"UIColor"});
  load();
  EXPECT_EQ(installed.size(), everything().size() - 4);
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
  // The key is the getter's selector, the value a boolean object.
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
