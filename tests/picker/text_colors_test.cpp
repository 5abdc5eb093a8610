// The text colours: on hundreds of pictures, and on both sides of every limit.
#include <limits>

#include "objc/autorelease_pool.h"
#include "objc/hook.h"
#include "picker/chosen_frame.h"
#include "support/encodings.h"

namespace {

using namespace test;
using pictures::Picture;
using reference::Color;

class PickerScheme : public Analysis, public testing::WithParamInterface<pictures::Kind> {};

TEST_P(PickerScheme, HasTheColorsOfThePlainComputation) {
  for (const Picture& picture : GetParam().make()) {
    const objc::AutoreleasePool pool;
    UIImage* image = platformImage(picture);
    const reference::Scheme expected =
        reference::schemeOf(reference::frameOf(squeezed(picture, image)));
    NSObject* scheme = schemeOf(image);
    ASSERT_NE(scheme, nullptr) << picture.name;
    EXPECT_EQ(componentsOf(background(scheme)), expected.background) << picture.name;
    EXPECT_EQ(componentsOf(primary(scheme)), expected.primary) << picture.name;
    EXPECT_EQ(componentsOf(secondary(scheme)), expected.secondary) << picture.name;
    UIColor* biggest = nullptr;
    dumpedFrame(&biggest);
    EXPECT_EQ(componentsOf(biggest), expected.background) << picture.name;
    for (UIColor* color : {background(scheme), primary(scheme), secondary(scheme), biggest})
      EXPECT_EQ(hsbOf(color)[3], 1) << picture.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Pictures, PickerScheme, testing::ValuesIn(pictures::kKinds),
                         pictures::nameOf);

class PickerTextColors : public ChosenFrame {};

TEST_F(PickerTextColors, ThePrimaryIsFartherThanTheLimitFromTheBackground) {
  readFrame();
  put(0, 0, {120, 40, 16, 200});  // 16256 from black
  put(1, 0, {127, 8, 8, 5});      // 16257
  EXPECT_EQ(primaryFor(kBlack), color(127, 8, 8));
  put(1, 0, {0, 0, 0, 255});
  EXPECT_EQ(primaryFor(kBlack), kBlack);
}

TEST_F(PickerTextColors, TheSecondaryIsFartherThanTheLimitFromTheBackgroundToo) {
  readFrame();
  put(0, 0, {0, 0, 0, 200});
  put(1, 0, {135, 215, 239, 100});  // 16256 from white
  put(2, 0, {0, 80, 0, 50});
  EXPECT_EQ(primaryFor(kWhite), kBlack);
  EXPECT_EQ(secondaryFor(kWhite), color(0, 80, 0));
  // One step farther it is chosen, but then lacks contrast.
  put(1, 0, {128, 247, 247, 100});
  EXPECT_EQ(secondaryFor(kWhite), kGreyBlack);
}

TEST_F(PickerTextColors, TheSecondaryIsFartherThanTheLimitFromThePrimary) {
  readFrame();
  put(0, 0, {170, 170, 170, 200});
  // 5852 is not a sum of three squares.
  put(1, 0, {245, 185, 171, 100});  // 5851 from it
  put(2, 0, {244, 186, 181, 50});   // 5853
  EXPECT_EQ(primaryFor(kBlack), color(170, 170, 170));
  EXPECT_EQ(secondaryFor(kBlack), color(244, 186, 181));
}

TEST_F(PickerTextColors, TheFirstOfTheSecondariesWins) {
  readFrame();
  put(0, 0, {0, 0, 255, 90});
  put(5, 9, {255, 255, 0, 80});
  put(4, 10, {255, 255, 255, 80});
  EXPECT_EQ(secondaryFor(kBlack), color(255, 255, 0));
}

TEST_F(PickerTextColors, ComponentsAreTruncated) {
  readFrame();
  put(0, 0, {137, 8, 8, 5});  // 16257 from a red of 10, 16004 from one of 11
  EXPECT_EQ(primaryFor({10.9 / 255, 0, 0}), color(137, 8, 8));
  EXPECT_EQ(primaryFor({11.0 / 255, 0, 0}), kBlack);
  const float limit = std::sqrt(16256.5F) / 255;
  EXPECT_EQ(filtered(platformColor({10.9 / 255, 0, 0}), limit), color(137, 8, 8));
  EXPECT_EQ(filtered(platformColor({11.0 / 255, 0, 0}), limit), kBlack);
}

TEST_F(PickerTextColors, ANilColorCountsAsBlack) {
  readFrame();
  put(0, 0, {120, 40, 16, 200});
  put(1, 0, {127, 8, 8, 5});
  EXPECT_EQ(componentsOf(primary(schemeFor(nullptr))), color(127, 8, 8));
  EXPECT_EQ(componentsOf(secondary(schemeFor(nullptr))), kGreyWhite);
  EXPECT_EQ(filtered(nullptr, 0.5F), color(127, 8, 8));
}

TEST_F(PickerTextColors, AColorThatIsNoNumberCountsAsBlack) {
  readFrame();
  put(0, 0, {128, 0, 0, 5});  // far from a red of 0, near one of 255
  UIColor* none = platformColor({std::numeric_limits<CGFloat>::quiet_NaN(), 0, 0});
  EXPECT_EQ(componentsOf(primary(schemeFor(none))), color(128, 0, 0));
  EXPECT_EQ(filtered(none, 0.5F), color(128, 0, 0));
}

/// A colour whose red is out of range, as in wide-gamut colours.
UIColor* wideColor = nullptr;
CGFloat wideRed = 0;
objc::Hook<UIColor::getRed> getRed;

bool answerWideRed(UIColor* self, SEL command, CGFloat* red, CGFloat* green, CGFloat* blue,
                   CGFloat* alpha) {
  const bool answer = getRed.original(self, command, red, green, blue, alpha);
  if (self == wideColor) *red = wideRed;
  return answer;
}

TEST_F(PickerTextColors, ComponentsBeyondTheRangeAreItsEnds) {
  getRed.install<&answerWideRed>(objc_getClass("UIColor"), UIColor::getRed);
  readFrame();
  put(0, 0, {128, 0, 0, 5});
  put(1, 0, {127, 0, 0, 4});
  wideColor = platformColor(kBlack);
  using Limits = std::numeric_limits<CGFloat>;
  for (CGFloat red :
       {static_cast<CGFloat>(-0.01), CGFloat{-1}, -Limits::max(), -Limits::infinity()}) {
    wideRed = red;
    EXPECT_EQ(componentsOf(primary(schemeFor(wideColor))), color(128, 0, 0)) << red;
    EXPECT_EQ(filtered(wideColor, 0.5F), color(128, 0, 0)) << red;
  }
  for (CGFloat red : {static_cast<CGFloat>(1.01), CGFloat{2}, Limits::max(), Limits::infinity()}) {
    wideRed = red;
    EXPECT_EQ(componentsOf(primary(schemeFor(wideColor))), color(127, 0, 0)) << red;
    EXPECT_EQ(filtered(wideColor, 0.5F), color(127, 0, 0)) << red;
  }
}

TEST_F(PickerTextColors, ANilSchemeIsLeftAlone) {
  readFrame();
  send<void>(picker, "findTextColorsTaskForColorScheme:"_sel, static_cast<NSObject*>(nullptr));
}

TEST_F(PickerTextColors, KnownSchemes) {
  const Picture black{"black", 32, 32, std::vector<std::uint8_t>(4096, 0)};
  NSObject* scheme = schemeOf(platformImage(black));
  EXPECT_EQ(componentsOf(background(scheme)), kBlack);
  EXPECT_EQ(componentsOf(primary(scheme)), kBlack);
  EXPECT_EQ(componentsOf(secondary(scheme)), kGreyWhite);
  Picture white{"white", 32, 32, std::vector<std::uint8_t>(4096, 255)};
  scheme = schemeOf(platformImage(white));
  EXPECT_EQ(componentsOf(background(scheme)), kWhite);
  EXPECT_EQ(componentsOf(primary(scheme)), kBlack);
  EXPECT_EQ(componentsOf(secondary(scheme)), kBlack);
}

TEST_F(PickerTextColors, ANewSchemeHasNoColors) {
  auto* scheme = make<NSObject>("CQColorScheme");
  EXPECT_EQ(background(scheme), nullptr);
  EXPECT_EQ(primary(scheme), nullptr);
  EXPECT_EQ(secondary(scheme), nullptr);
}

TEST_F(PickerTextColors, MethodsHaveTheirEncodings) {
  const std::pair<const char*, std::string> kMethods[] = {
      {"findTextColorsTaskForColorScheme:", "v@:@"},
      {"isSufficienteContrastBetweenBackground:andForground:", nativeEncoding("B@:@@")},
      {"colorFromImageWithWidth:height:filteringColor:tolerance:", nativeEncoding("@@:QQ@f")},
      {"colorWithBiggerCountFromImageWidth:height:", nativeEncoding("@@:QQ")},
      {"dumpImageWithWidth:height:biggestAlphaColorReturn:", nativeEncoding("@@:QQ^@")},
      {"scaleImage:width:height:", "@@:@dd"},
  };
  for (const auto& [name, types] : kMethods) {
    objc_method* method =
        class_getInstanceMethod(objc_getClass("CQColorPicker"), sel_registerName(name));
    ASSERT_NE(method, nullptr) << name;
    EXPECT_EQ(method_getTypeEncoding(method), types) << name;
  }
}

}  // namespace
