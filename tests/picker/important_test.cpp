// The colour that stands for an image: on hundreds of pictures, and on both sides of every limit.
#include <cmath>

#include "OpenGLES/gl.h"
#include "objc/autorelease_pool.h"
#include "objc/hook.h"
#include "picker/analysis.h"

namespace {

using namespace test;
using pictures::Picture;
using reference::Color;

/// A hue, and colours made from it, have the rounding errors of a quotient of small differences.
constexpr double kOfHues = 4 * kRounding;

UIColor* importantColor(UIImage* image) {
  static auto* function = plainFunction<UIColor*(UIImage*)>("plainImportantColor");
  return function(image);
}

CGFloat hue(UIColor* color) { return hsbOf(color)[0]; }
CGFloat saturation(UIColor* color) { return hsbOf(color)[1]; }
CGFloat brightness(UIColor* color) { return hsbOf(color)[2]; }
CGFloat alpha(UIColor* color) { return hsbOf(color)[3]; }

class PickerImportant : public PlainAnalysis, public testing::WithParamInterface<pictures::Kind> {};

TEST_P(PickerImportant, IsThePlainComputations) {
  int pushed = 0;
  int whole = 0;
  for (const Picture& picture : GetParam().make()) {
    const objc::AutoreleasePool pool;
    UIImage* image = platformImage(picture);
    const reference::Scheme scheme =
        reference::schemeOf(reference::frameOf(squeezed(picture, image)));
    const Color expected = reference::importantOf(scheme);
    const bool isOfScheme =
        expected == scheme.background || expected == scheme.primary || expected == scheme.secondary;
    const Color found = componentsOf(importantColor(image));
    if (isOfScheme) {
      EXPECT_EQ(found, expected) << picture.name;
    } else {
      EXPECT_NEAR(found.red, expected.red, kOfHues) << picture.name;
      EXPECT_NEAR(found.green, expected.green, kOfHues) << picture.name;
      EXPECT_NEAR(found.blue, expected.blue, kOfHues) << picture.name;
    }
    ++(isOfScheme ? whole : pushed);
  }
  RecordProperty("pushed", pushed);
  RecordProperty("ofTheScheme", whole);
}

class PickerKept : public PlainAnalysis {};

// Compiling shaders is slow, so the picker that has them is kept for the next question.
TEST_F(PickerKept, IsTheSameForEachQuestion) {
  const objc::AutoreleasePool pool;
  importantColor(plainPicture(200, 30, 60));
  importantColor(plainPicture(30, 60, 200));
  EXPECT_EQ(host::gl::callCount("glCreateProgram"), 1U);
}

INSTANTIATE_TEST_SUITE_P(Pictures, PickerImportant, testing::ValuesIn(pictures::kKinds),
                         pictures::nameOf);

/// The scheme that every picker returns, if a test has chosen one.
NSObject* chosenScheme = nullptr;

NSObject* answerChosenScheme(NSObject*, SEL, UIImage*) { return chosenScheme; }

class ImportantChoice : public PlainAnalysis {
 protected:
  void SetUp() override {
    PlainAnalysis::SetUp();
    MSHookMessageEx(objc_getClass("CQColorPicker"), "colorSchemeFromImage:"_sel,
                    reinterpret_cast<IMP>(&answerChosenScheme), &saved);
    chosenScheme = make<NSObject>("CQColorScheme");
    choose(grey(0), grey(0), grey(0));
  }

  static UIColor* grey(double value) { return test::rgb(value, value, value); }
  static void choose(UIColor* background, UIColor* primary, UIColor* secondary) {
    send<void>(chosenScheme, "setBackgroundColor:"_sel, background);
    send<void>(chosenScheme, "setPrimaryTextColor:"_sel, primary);
    send<void>(chosenScheme, "setSecondaryTextColor:"_sel, secondary);
  }
  /// A grey with additional red.
  struct Reddish {
    CGFloat most, rest;

    CGFloat saturation() const { return (most - rest) / most; }
  };
  /// This colour or the next darker one with exactly the given saturation: not every number is the
  /// quotient of two others.
  static UIColor* saturated(Reddish from, CGFloat saturation) {
    while (from.saturation() != saturation && from.most > CGFloat{0.25}) {
      from.most -= CGFloat{1} / 4096;
      from.rest = from.most - from.most * saturation;
    }
    return test::rgb(from.most, from.rest, from.rest);
  }
  static UIColor* important() { return importantColor(nullptr); }

  IMP saved = nullptr;
};

TEST_F(ImportantChoice, TheMostSaturatedWins) {
  UIColor* vivid = test::rgb(0.9, 0.1, 0.2);
  UIColor* dull = test::rgb(0.5, 0.45, 0.4);
  UIColor* middling = test::rgb(0.5, 0.3, 0.4);
  choose(vivid, dull, middling);
  EXPECT_EQ(important(), vivid);
  choose(dull, vivid, middling);
  EXPECT_EQ(important(), vivid);
  choose(dull, middling, vivid);
  EXPECT_EQ(important(), vivid);
}

TEST_F(ImportantChoice, ATieKeepsThePrimaryThenTheText) {
  UIColor* first = test::rgb(1, 0.25, 0.25);
  UIColor* second = test::rgb(0.25, 1, 0.25);
  UIColor* third = test::rgb(0.25, 0.25, 1);
  choose(first, second, third);
  EXPECT_EQ(important(), second);
  choose(first, grey(1), third);
  EXPECT_EQ(important(), third);
  choose(grey(0.25), grey(0.5), grey(0.75));
  EXPECT_EQ(componentsOf(important()), (Color{0.5, 0.5, 0.5}));
}

TEST_F(ImportantChoice, MiddlingSaturationIsPushed) {
  UIColor* middling = UIColor::colorWithHue(0.55, 0.5, 0.8, 0.4);
  choose(middling, grey(0), grey(1));
  UIColor* found = important();
  EXPECT_NEAR(hue(found), 0.55, kOfHues);
  EXPECT_NEAR(saturation(found), 0.76, kRounding);
  EXPECT_NEAR(brightness(found), 0.8, kRounding);
  EXPECT_EQ(alpha(found), 1);
}

TEST_F(ImportantChoice, ASaturationOf63PerCentIsVivid) {
  // Exactly the limit, or the next larger number.
  CGFloat limit = 0.63;
  if (limit < 0.63) limit = std::nextafter(limit, CGFloat{1});
  UIColor* vivid = saturated({0.5, 0.185}, limit);
  ASSERT_EQ(saturation(vivid), limit);
  choose(vivid, grey(0), grey(0));
  EXPECT_EQ(important(), vivid);
  UIColor* more = test::rgb(0.5, 0.184, 0.184);
  choose(more, grey(0), grey(0));
  EXPECT_EQ(important(), more);
  const CGFloat below = std::nextafter(limit, CGFloat{0});
  UIColor* less = saturated({0.5, 0.185}, below);
  ASSERT_EQ(saturation(less), below);
  ASSERT_LT(below, 0.63);
  choose(less, grey(0), grey(0));
  EXPECT_NE(important(), less);
  EXPECT_NEAR(saturation(important()), 0.76, kRounding);
}

TEST_F(ImportantChoice, ASaturationOf10PerCentIsGrey) {
  // Exactly the limit, or the next smaller number.
  CGFloat limit = 0.1;
  if (limit > 0.1) limit = std::nextafter(limit, CGFloat{0});
  UIColor* greyish = saturated({0.9997, 0.89973}, limit);
  ASSERT_EQ(saturation(greyish), limit);
  choose(grey(0), greyish, grey(0));
  EXPECT_EQ(important(), greyish);
  UIColor* less = test::rgb(0.9997, 0.9, 0.9);
  choose(grey(0), less, grey(0));
  EXPECT_EQ(important(), less);
  const CGFloat above = std::nextafter(limit, CGFloat{1});
  UIColor* more = saturated({0.9997, 0.89973}, above);
  ASSERT_EQ(saturation(more), above);
  ASSERT_GT(above, 0.1);
  choose(grey(0), more, grey(0));
  EXPECT_NE(important(), more);
  EXPECT_NEAR(saturation(important()), 0.76, kRounding);
}

TEST_F(ImportantChoice, ThePlatformsGreysStay) {
  choose(grey(0), grey(0), UIColor::whiteColor());
  EXPECT_EQ(componentsOf(important()), (Color{0, 0, 0}));
}

TEST_F(ImportantChoice, MissingColorsCountAsGrey) {
  UIColor* vivid = test::rgb(1, 0, 0);
  choose(vivid, nullptr, nullptr);
  EXPECT_EQ(important(), vivid);
  choose(nullptr, nullptr, vivid);
  EXPECT_EQ(important(), vivid);
}

class ImportantInBackground : public PlainAnalysis {
 protected:
  static void become(NSInteger state) {
    send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, state);
  }
  static UIImage* plain(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    Picture picture{"plain", 8, 8, {}};
    for (int i = 0; i < 64; ++i) picture.rgba.insert(picture.rgba.end(), {red, green, blue, 255});
    return platformImage(picture);
  }
};

TEST_F(ImportantInBackground, ThereIsNoScheme) {
  become(UIApplicationStateBackground);
  EXPECT_EQ(schemeOf(plain(40, 90, 60)), nullptr);
  become(1);
  EXPECT_NE(schemeOf(plain(40, 90, 60)), nullptr);
  become(0);
  EXPECT_NE(schemeOf(plain(40, 90, 60)), nullptr);
}

TEST_F(ImportantInBackground, TheAverageColorsHueIsSaturated) {
  become(UIApplicationStateBackground);
  UIColor* found = importantColor(plain(40, 90, 60));
  const reference::Hsb expected = reference::hsbOf(reference::colorOf({40, 90, 60, 255}));
  EXPECT_NEAR(hue(found), expected.hue, kOfHues);
  EXPECT_EQ(saturation(found), 1);
  EXPECT_EQ(brightness(found), 0.875);
  EXPECT_EQ(alpha(found), 1);
}

TEST_F(ImportantInBackground, AGreyImageAndNoneAreRed) {
  become(UIApplicationStateBackground);
  for (UIImage* image : {plain(90, 90, 90), plain(0, 0, 0), static_cast<UIImage*>(nullptr)})
    EXPECT_EQ(componentsOf(importantColor(image)), (Color{0.875, 0, 0}));
}

TEST_F(ImportantInBackground, ComingBackGivesTheSchemesColorAgain) {
  become(UIApplicationStateBackground);
  EXPECT_EQ(brightness(importantColor(plain(200, 30, 30))), 0.875);
  become(0);
  EXPECT_EQ(componentsOf(importantColor(plain(200, 30, 30))),
            reference::colorOf({200, 30, 30, 255}));
}

TEST_F(ImportantInBackground, InTheForegroundNoImageIsBlack) {
  EXPECT_EQ(componentsOf(importantColor(nullptr)), (Color{0, 0, 0}));
}

}  // namespace
