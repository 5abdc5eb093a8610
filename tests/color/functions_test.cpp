// Colours made darker, averaged and measured.
#include <cmath>
#include <limits>

#include "objc/hook.h"
#include "picker/analysis.h"
#include "support/encodings.h"

namespace {

using namespace test;
using pictures::Picture;
using reference::Color;

UIColor* darken(UIColor* color, float amount) {
  static auto* function = plainFunction<UIColor*(UIColor*, float)>("plainDarken");
  return function(color, amount);
}

UIColor* averageColor(UIImage* image) {
  static auto* function = plainFunction<UIColor*(UIImage*)>("plainAverageColor");
  return function(image);
}

using Triple = std::array<NSUInteger, 3>;

NSUInteger squareDistance(const Triple& a, const Triple& b) {
  static auto* function =
      plainFunction<NSUInteger(const NSUInteger*, const NSUInteger*)>("plainSquareDistance");
  return function(a.data(), b.data());
}

/// The arguments of the last request to the platform for a colour of a hue.
std::array<CGFloat, 4> askedHsb{};
IMP originalWithHue = nullptr;

UIColor* noteHsb(Class cls, SEL command, CGFloat hue, CGFloat saturation, CGFloat brightness,
                 CGFloat alpha) {
  askedHsb = {hue, saturation, brightness, alpha};
  return reinterpret_cast<decltype(&noteHsb)>(originalWithHue)(cls, command, hue, saturation,
                                                               brightness, alpha);
}

bool answerNo(UIColor*, SEL, CGFloat* hue, CGFloat*, CGFloat*, CGFloat*) {
  *hue = 0.5;
  return false;
}

class ColorFunctions : public PlainAnalysis {
 protected:
  void SetUp() override {
    PlainAnalysis::SetUp();
    MSHookMessageEx(objc_getMetaClass("UIColor"), "colorWithHue:saturation:brightness:alpha:"_sel,
                    reinterpret_cast<IMP>(&noteHsb), &originalWithHue);
  }

  static void leaveColorsWithoutHsb() {
    MSHookMessageEx(objc_getClass("UIColor"), "getHue:saturation:brightness:alpha:"_sel,
                    reinterpret_cast<IMP>(&answerNo), &ignored);
  }
  static std::array<CGFloat, 4> hsb(UIColor* color) { return hsbOf(color); }

  static UIImage* image(unsigned width, unsigned height, std::vector<std::uint8_t> rgba) {
    return platformImage(Picture{"", width, height, std::move(rgba)});
  }
  static UIImage* plain(unsigned width, unsigned height, const reference::Pixel& pixel) {
    std::vector<std::uint8_t> rgba;
    for (unsigned i = 0; i < width * height; ++i)
      rgba.insert(rgba.end(), {pixel.red, pixel.green, pixel.blue, pixel.alpha});
    return image(width, height, std::move(rgba));
  }

  static inline IMP ignored = nullptr;
};

TEST_F(ColorFunctions, DarkenOfNilIsNil) { EXPECT_EQ(darken(nullptr, 15), nullptr); }

TEST_F(ColorFunctions, DarkenLeavesAColorWithoutHsbAsItIs) {
  UIColor* color = test::rgb(0.2, 0.4, 0.6);
  leaveColorsWithoutHsb();
  EXPECT_EQ(darken(color, 15), color);
}

TEST_F(ColorFunctions, DarkenByNothingKeepsTheColor) {
  UIColor* color = UIColor::colorWithHue(0.6, 0.5, 0.8, 0.7);
  const auto before = hsb(color);
  UIColor* found = darken(color, 0);
  EXPECT_EQ(askedHsb, before);
  const auto after = hsb(found);
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_NEAR(after[i], before[i], kRounding) << i;
}

TEST_F(ColorFunctions, DarkenLowersBrightnessAndRaisesSaturation) {
  // The factors are single-precision numbers, but the products are not.
  struct Case {
    float amount, saturating, dimming;
  };
  for (const Case& c : {Case{15, 1.15F, 0.85F}, Case{30, 1.3F, 0.7F}, Case{100, 2, 0}}) {
    UIColor* color = UIColor::colorWithHue(0.6, 0.25, 0.8, 0.7);
    const auto [hue, saturation, brightness, alpha] = hsb(color);
    UIColor* found = darken(color, c.amount);
    EXPECT_EQ(askedHsb[0], hue);
    EXPECT_EQ(askedHsb[1], saturation * CGFloat{c.saturating}) << c.amount;
    EXPECT_EQ(askedHsb[2], brightness * CGFloat{c.dimming}) << c.amount;
    EXPECT_EQ(askedHsb[3], alpha);
    EXPECT_NEAR(hsbOf(found)[2], askedHsb[2], kRounding) << c.amount;
  }
}

TEST_F(ColorFunctions, DarkenClampsNothing) {
  UIColor* color = UIColor::colorWithHue(0.25, 0.75, 0.5, 1);
  const auto [hue, saturation, brightness, alpha] = hsb(color);
  ASSERT_EQ(saturation, 0.75);
  ASSERT_EQ(brightness, 0.5);
  darken(color, 100);
  EXPECT_EQ(askedHsb[1], 1.5);
  EXPECT_EQ(askedHsb[2], 0);
  darken(color, 150);
  EXPECT_EQ(askedHsb[1], 1.875);
  EXPECT_EQ(askedHsb[2], -0.25);
  darken(color, -50);
  EXPECT_EQ(askedHsb[1], 0.375);
  EXPECT_EQ(askedHsb[2], 0.75);
  darken(color, std::numeric_limits<float>::quiet_NaN());
  EXPECT_TRUE(std::isnan(askedHsb[1]) && std::isnan(askedHsb[2]));
  darken(color, std::numeric_limits<float>::infinity());
  EXPECT_TRUE(std::isinf(askedHsb[1]) && std::isinf(askedHsb[2]));
}

TEST_F(ColorFunctions, DarkenOfAGrey) {
  darken(UIColor::whiteColor(), 30);
  EXPECT_EQ(askedHsb, (std::array<CGFloat, 4>{0, 0, CGFloat{0.7F}, 1}));
}

TEST_F(ColorFunctions, AverageOfOneColorIsThatColor) {
  for (const auto& [width, height] : {std::pair{1U, 1U}, {2U, 2U}, {32U, 32U}, {61U, 7U}}) {
    UIColor* found = averageColor(plain(width, height, {200, 100, 51, 255}));
    const Color color = componentsOf(found);
    EXPECT_NEAR(color.red, 200 / 255.0, kRounding) << width;
    EXPECT_NEAR(color.green, 100 / 255.0, kRounding) << width;
    EXPECT_NEAR(color.blue, 51 / 255.0, kRounding) << width;
    EXPECT_FALSE(color.isGrey);
    EXPECT_EQ(hsbOf(found)[3], 1) << width;
  }
}

TEST_F(ColorFunctions, AverageOfTwoColorsLiesBetween) {
  const Color found = componentsOf(averageColor(image(2, 1, {200, 0, 10, 255, 100, 50, 20, 255})));
  EXPECT_NEAR(found.red * 255, 150, 1);
  EXPECT_NEAR(found.green * 255, 25, 1);
  EXPECT_NEAR(found.blue * 255, 15, 1);
}

TEST_F(ColorFunctions, AverageIsMultipliedByAlphaTwice) {
  UIColor* found = averageColor(plain(16, 16, {128, 0, 0, 128}));
  const Color color = componentsOf(found);
  EXPECT_EQ(color.red, static_cast<CGFloat>(128 / 255.0 / 255.0 * 128));
  EXPECT_NEAR(color.red, 0.25, 0.01);
  EXPECT_EQ(color.green, 0);
  EXPECT_EQ(color.blue, 0);
  EXPECT_EQ(hsbOf(found)[3], static_cast<CGFloat>(128 / 255.0));
}

TEST_F(ColorFunctions, AverageOfNothingIsTransparentBlack) {
  for (UIImage* nothing :
       {plain(5, 5, {0, 0, 0, 0}), static_cast<UIImage*>(nullptr), make<UIImage>("UIImage")}) {
    UIColor* found = averageColor(nothing);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(componentsOf(found), (Color{0, 0, 0}));
    EXPECT_EQ(hsbOf(found)[3], 0);
  }
}

TEST_F(ColorFunctions, AverageIsUnderTheColorsOfPictures) {
  for (const Picture& picture : pictures::photographs()) {
    std::array<double, 3> sums{};
    for (std::size_t i = 0; i < picture.rgba.size(); ++i)
      if (i % 4 < 3) sums[i % 4] += picture.rgba[i];
    const double count = static_cast<double>(picture.rgba.size()) / 4;
    const Color found = componentsOf(averageColor(platformImage(picture)));
    EXPECT_NEAR(found.red * 255, sums[0] / count, 1) << picture.name;
    EXPECT_NEAR(found.green * 255, sums[1] / count, 1) << picture.name;
    EXPECT_NEAR(found.blue * 255, sums[2] / count, 1) << picture.name;
  }
}

TEST_F(ColorFunctions, SquaredDistancesOfWholeNumbers) {
  EXPECT_EQ(squareDistance({0, 0, 0}, {255, 255, 255}), 195075U);
  EXPECT_EQ(squareDistance({255, 255, 255}, {0, 0, 0}), 195075U);
  EXPECT_EQ(squareDistance({1, 2, 3}, {1, 2, 3}), 0U);
  EXPECT_EQ(squareDistance({10, 0, 0}, {0, 0, 0}), 100U);
  EXPECT_EQ(squareDistance({0, 10, 0}, {0, 0, 0}), 100U);
  EXPECT_EQ(squareDistance({0, 0, 0}, {0, 0, 10}), 100U);
}

TEST_F(ColorFunctions, SquaredDistancesWrapAround) {
  constexpr NSUInteger kMost = std::numeric_limits<NSUInteger>::max();
  EXPECT_EQ(squareDistance({kMost, 0, 0}, {0, 0, 0}), 1U);
  constexpr NSUInteger kRoot = NSUInteger{1} << sizeof(NSUInteger) * 4;
  EXPECT_EQ(squareDistance({kRoot, 0, 0}, {0, 3, 0}), 9U);
  EXPECT_EQ(squareDistance({0, 0, 0}, {kMost, kMost, kMost}), 3U);
}

}  // namespace
