// Enhanced contrast of backgrounds, in both centres.
#include "UIGraphics/UIAccessibility.h"
#include "support/centers.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

class Contrast : public Centers {};

/// The notification that a contrast change passes on to the platform.
NSObject* handedOn = nullptr;
template <auto Declared>
struct ContrastChange {
  static void install(Class cls) { hook.template install<&noted>(cls, Declared); }
  static void noted(typename decltype(Declared)::Class* self, SEL command, NSObject* notification) {
    handedOn = notification;
    hook.original(self, command, notification);
  }
  static inline constinit objc::Hook<Declared> hook;
};

TEST_F(Contrast, AContrastChangeIsHandedOn) {
  settings("");
  startSpringBoard();
  ContrastChange<SBControlCenterContentContainerView::contrastDidChange>::install(
      objc_getClass(kControlCenter));
  ContrastChange<SBNotificationCenterViewController::contrastDidChange>::install(
      objc_getClass(kNotificationCenter));
  load();
  NSObject* first = string("first");
  send<void>(controlCenter(), "_accessibilityBackgroundContrastDidChange:"_sel, first);
  EXPECT_EQ(handedOn, first);
  NSObject* second = string("second");
  send<void>(notificationCenter(), "_backgroundContrastDidChange:"_sel, second);
  EXPECT_EQ(handedOn, second);
}

TEST_F(Contrast, EnhancedContrastShowsThePlainColor) {
  centers(integerEntry("cc_color_type", 2) + stringEntry("cc_color", "#336699:0.5"));
  recordSettings();
  host::setEnhancedBackgroundContrast(true);
  controlContrast();
  EXPECT_EQ(background(controlCenter()), "#33669980");
  EXPECT_EQ(calls(), Lines{"_accessibilityBackgroundContrastDidChange:"});
  EXPECT_EQ(writes(), Lines());
}

TEST_F(Contrast, OrdinaryContrastTintsTheBlurAgain) {
  centers(stringEntry("global_color", "#336699"));
  recordSettings();
  host::setEnhancedBackgroundContrast(true);
  controlContrast();
  calls().clear();
  host::setEnhancedBackgroundContrast(false);
  controlContrast();
  EXPECT_EQ(background(controlCenter()), "nil");
  EXPECT_EQ(calls(), (Lines{"_accessibilityBackgroundContrastDidChange:", "colorBackdrop"}));
  EXPECT_EQ(writes(), tinted("#336699ff", "0.6"));
}

TEST_F(Contrast, ContrastIsThePlatformsWhereControlCenterIsOff) {
  centers(integerEntry("cc_color_type", 1));
  recordSettings();
  for (bool enhanced : {true, false}) {
    host::setEnhancedBackgroundContrast(enhanced);
    calls().clear();
    controlContrast();
    EXPECT_EQ(background(controlCenter()), enhanced ? "#333333ff" : "nil");
    EXPECT_EQ(calls(), Lines{"_accessibilityBackgroundContrastDidChange:"});
  }
  EXPECT_EQ(writes(), Lines());
}

TEST_F(Contrast, NotificationCenterIsTintedWhateverTheContrast) {
  centers("");
  recordSettings();
  for (bool enhanced : {true, false}) {
    host::setEnhancedBackgroundContrast(enhanced);
    calls().clear();
    writes().clear();
    send<void>(notificationCenter(), "_backgroundContrastDidChange:"_sel, kNothing);
    EXPECT_EQ(calls(), (Lines{"_backgroundContrastDidChange:", "colorBackdrop"}));
    EXPECT_EQ(writes(), tinted("#de3027ff", "0.6"));
  }
}

}  // namespace
