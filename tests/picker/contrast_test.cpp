// Which colours are readable on which, and what is used if they are not.
#include "objc/autorelease_pool.h"
#include "picker/chosen_frame.h"

namespace {

using namespace test;
using reference::Color;

class PickerContrast : public ChosenFrame {};

TEST_F(PickerContrast, ContrastTakes125OfBrightness) {
  EXPECT_FALSE(contrastsWithBlack(color(255, 33, 255)));  // 124.7
  EXPECT_TRUE(contrastsWithBlack(color(255, 34, 255)));   // 125.3
  // Exactly at the limit is enough. The components are single-precision numbers.
  float green = 33.0F / 255;
  while (reference::yOf({1, green, 1}) * 255 < 125) green = above(green);
  ASSERT_EQ(reference::yOf({1, green, 1}) * 255, 125.0F);
  EXPECT_TRUE(contrastsWithBlack({1, green, 1}));
  EXPECT_FALSE(contrastsWithBlack({1, below(green), 1}));
}

TEST_F(PickerContrast, ContrastTakesMoreThan500OfColor) {
  EXPECT_FALSE(contrastsWithBlack(color(255, 245, 0)));
  EXPECT_TRUE(contrastsWithBlack(color(255, 246, 0)));
  float green = 244.9F / 255;
  while ((1 + green) * 255 < 500) green = above(green);
  ASSERT_EQ((1 + green) * 255, 500.0F);
  EXPECT_FALSE(contrastsWithBlack({1, green, 0}));
  while ((1 + green) * 255 <= 500) green = above(green);
  EXPECT_TRUE(contrastsWithBlack({1, green, 0}));
}

TEST_F(PickerContrast, ContrastIsTheSameBothWays) {
  UIColor* dark = platformColor(color(10, 20, 30));
  UIColor* light = platformColor(color(240, 230, 220));
  EXPECT_TRUE(contrasts(dark, light));
  EXPECT_TRUE(contrasts(light, dark));
  EXPECT_FALSE(contrasts(dark, dark));
}

TEST_F(PickerContrast, AGreyAndNilContrastAsBlack) {
  UIColor* white = platformColor(kWhite);
  UIColor* black = platformColor(kBlack);
  EXPECT_TRUE(contrasts(white, UIColor::whiteColor()));
  EXPECT_TRUE(contrasts(white, UIColor::blackColor()));
  EXPECT_TRUE(contrasts(UIColor::whiteColor(), white));
  EXPECT_TRUE(contrasts(nullptr, white));
  EXPECT_TRUE(contrasts(white, nullptr));
  EXPECT_FALSE(contrasts(UIColor::whiteColor(), UIColor::blackColor()));
  EXPECT_FALSE(contrasts(black, UIColor::whiteColor()));
  EXPECT_FALSE(contrasts(UIColor::whiteColor(), black));
  EXPECT_FALSE(contrasts(nullptr, nullptr));
}

TEST_F(PickerContrast, ContrastAgreesWithThePlainComputation) {
  const pictures::Picture colors = pictures::noise().front();
  ASSERT_GE(colors.rgba.size(), 4000U);
  int sufficient = 0;
  for (std::size_t i = 0; i < 500; ++i) {
    const objc::AutoreleasePool pool;
    const std::uint8_t* p = &colors.rgba[i * 8];
    const Color a = color(p[0], p[1], p[2]);
    const Color b = color(p[4], p[5], p[6]);
    const bool expected = reference::contrasts(a, b);
    EXPECT_EQ(contrasts(platformColor(a), platformColor(b)), expected) << i;
    sufficient += expected;
  }
  EXPECT_GE(sufficient, 5);
}

TEST_F(PickerContrast, WithoutASecondaryBlackIsTriedForContrast) {
  readFrame();
  put(0, 0, {0, 0, 200, 9});
  EXPECT_EQ(primaryFor(kWhite), color(0, 0, 200));
  EXPECT_EQ(secondaryFor(kWhite), kBlack);
  EXPECT_EQ(primaryFor(kBlack), color(0, 0, 200));
  EXPECT_EQ(secondaryFor(kBlack), kGreyWhite);
}

TEST_F(PickerContrast, TheFallbackIsWhiteOnDarkAndBlackOnLight) {
  readFrame();
  EXPECT_EQ(secondaryFor(color(0, 217, 0)), kGreyWhite);  // Y 0.4995
  EXPECT_EQ(secondaryFor(color(0, 218, 0)), kGreyBlack);  // Y 0.5018
  float green = 217.0F / 255;
  while (reference::yOf({0, green, 0}) < 0.5F) green = above(green);
  ASSERT_EQ(reference::yOf({0, green, 0}), 0.5F);
  EXPECT_EQ(secondaryFor({0, green, 0}), kGreyBlack);
  EXPECT_EQ(secondaryFor({0, below(green), 0}), kGreyWhite);
}

TEST_F(PickerContrast, AGreyBackgroundIsTakenForDark) {
  readFrame();
  EXPECT_EQ(componentsOf(secondary(schemeFor(UIColor::whiteColor()))), kGreyWhite);
  EXPECT_EQ(secondaryFor(kWhite), kBlack);
}

}  // namespace
