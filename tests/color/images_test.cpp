// Silhouettes in one colour, and images in another hue, pixel by pixel.
#include <algorithm>
#include <cmath>

#include "picker/analysis.h"
#include "support/bitmaps.h"

namespace {

using namespace test;

UIImage* recolor(UIImage* image, UIColor* color) {
  static auto* function = plainFunction<UIImage*(UIImage*, UIColor*)>("plainRecolorImage");
  return function(image, color);
}
UIImage* tint(UIImage* image, UIColor* color) {
  static auto* function = plainFunction<UIImage*(UIImage*, UIColor*)>("plainTintImage");
  return function(image, color);
}

CGImageRef bitmapOf(UIImage* image) { return send<CGImageRef>(image, "CGImage"_sel); }
Bytes pixelsOf(UIImage* image) { return drawn(bitmapOf(image)); }
CGFloat scaleOf(UIImage* image) { return send<CGFloat>(image, "scale"_sel); }
bool isResizable(UIImage* image) { return send<bool>(image, "_isResizable"_sel); }

std::array<CGFloat, 4> values(const UIEdgeInsets& i) { return {i.top, i.left, i.bottom, i.right}; }
std::array<CGFloat, 4> caps(UIImage* image) {
  return values(send<UIEdgeInsets>(image, "capInsets"_sel));
}
std::array<CGFloat, 4> alignment(UIImage* image) {
  return values(send<UIEdgeInsets>(image, "alignmentRectInsets"_sel));
}

/// The image at that scale, in pixels a point, and that orientation.
UIImage* shown(UIImage* image, CGFloat scale, NSInteger orientation = 0) {
  return send<UIImage*>(objc_getClass("UIImage"), "imageWithCGImage:scale:orientation:"_sel,
                        bitmapOf(image), scale, orientation);
}

/// Every alpha, with colours that must not matter.
UIImage* everyAlpha() {
  return picture(16, 16, [](std::size_t x, std::size_t y) {
    const auto alpha = static_cast<std::uint8_t>(y * 16 + x);
    return Pixel{static_cast<std::uint8_t>(alpha / 2), alpha, static_cast<std::uint8_t>(y), alpha};
  });
}

UIColor* colorOf(double red, double green, double blue, double alpha) {
  return UIColor::colorWithRed(static_cast<CGFloat>(red), static_cast<CGFloat>(green),
                               static_cast<CGFloat>(blue), static_cast<CGFloat>(alpha));
}

class ColorImages : public PlainAnalysis {};

// --- silhouettes ---------------------------------------------------------------------------------

TEST_F(ColorImages, ASilhouetteHasTheColorAndBothAlphas) {
  UIImage* image = everyAlpha();
  double worst = 0;
  for (const double alpha : {1.0, 0.75, 0.5, 0.1, 0.0}) {
    const double color[] = {1, 0.25, 0.6};
    const Bytes pixels = pixelsOf(recolor(image, colorOf(color[0], color[1], color[2], alpha)));
    ASSERT_EQ(pixels.size(), 16U * 16 * 4);
    for (std::size_t i = 0; i < 256; ++i) {
      const double covered = static_cast<double>(i) * alpha;
      worst = std::max(worst, std::abs(pixels[i * 4 + 3] - covered));
      for (std::size_t c = 0; c < 3; ++c)
        worst = std::max(worst, std::abs(pixels[i * 4 + c] - covered * color[c]));
    }
  }
  std::cout << "worst difference: " << worst << " of 255\n";
  EXPECT_LE(worst, 1);
}

TEST_F(ColorImages, ASilhouetteInAnOpaqueColorHasTheSourcesAlphaItself) {
  UIImage* image = everyAlpha();
  for (UIColor* color : {rgb(0, 0, 0), rgb(1, 1, 1), UIColor::whiteColor(), rgb(0.2, 0.4, 0.6)}) {
    const Bytes pixels = pixelsOf(recolor(image, color));
    for (std::size_t i = 0; i < 256; ++i) ASSERT_EQ(pixels[i * 4 + 3], i);
  }
  // A grey counts as a colour.
  EXPECT_EQ(pixelsOf(recolor(image, UIColor::whiteColor())),
            pixelsOf(recolor(image, rgb(1, 1, 1))));
}

TEST_F(ColorImages, AHalfTransparentColorMakesOpaqueAreasHalfTransparent) {
  const Bytes pixels = pixelsOf(recolor(plainPicture(10, 200, 30), colorOf(1, 0, 0, 0.5)));
  ASSERT_EQ(pixels.size(), 40U * 40 * 4);
  for (std::size_t i = 0; i < pixels.size(); i += 4) {
    ASSERT_EQ(pixels[i + 3], 128);
    ASSERT_EQ(pixels[i], 128);
    ASSERT_EQ(pixels[i + 1] + pixels[i + 2], 0);
  }
}

TEST_F(ColorImages, ASilhouetteStandsUpright) {
  UIImage* image = picture(3, 2, [](std::size_t x, std::size_t y) {
    return x == 0 && y == 0 ? Pixel{0, 0, 0, 255} : Pixel{};
  });
  Bytes expected(3 * 2 * 4);
  expected[0] = expected[3] = 255;
  EXPECT_EQ(pixelsOf(recolor(image, rgb(1, 0, 0))), expected);
}

TEST_F(ColorImages, ASilhouetteKeepsGeometryAndRenderingMode) {
  for (const CGFloat scale : {1.0, 2.0, 3.0}) {
    for (const NSInteger mode : {0, 1, 2}) {
      UIImage* image = shown(everyAlpha(), scale);
      image = send<UIImage*>(image, "imageWithAlignmentRectInsets:"_sel,
                             UIEdgeInsets{0.5, -1, 2, 0.25});
      image = send<UIImage*>(image, "imageWithRenderingMode:"_sel, mode);
      image = send<UIImage*>(image, "resizableImageWithCapInsets:"_sel, UIEdgeInsets{1, 2, 3, 4});
      UIImage* result = recolor(image, rgb(1, 0, 0));
      EXPECT_EQ(scaleOf(result), scale);
      EXPECT_EQ(CGImageGetWidth(bitmapOf(result)), 16U);
      EXPECT_EQ(CGImageGetHeight(bitmapOf(result)), 16U);
      EXPECT_EQ(caps(result), (std::array<CGFloat, 4>{1, 2, 3, 4}));
      EXPECT_EQ(alignment(result), (std::array<CGFloat, 4>{0.5, -1, 2, 0.25}));
      EXPECT_EQ(send<NSInteger>(result, "renderingMode"_sel), mode);
      EXPECT_TRUE(isResizable(result));
    }
  }
}

TEST_F(ColorImages, ASilhouetteStretchesEvenWithoutCaps) {
  UIImage* image = everyAlpha();
  ASSERT_FALSE(isResizable(image));
  UIImage* result = recolor(image, rgb(1, 0, 0));
  EXPECT_TRUE(isResizable(result));
  EXPECT_EQ(caps(result), (std::array<CGFloat, 4>{}));
  EXPECT_FALSE(isResizable(image));
}

TEST_F(ColorImages, ASilhouetteWithoutColorIsTransparent) {
  UIImage* image = send<UIImage*>(shown(everyAlpha(), 2), "resizableImageWithCapInsets:"_sel,
                                  UIEdgeInsets{1, 2, 3, 4});
  image = send<UIImage*>(image, "imageWithRenderingMode:"_sel, NSInteger{2});
  UIImage* result = recolor(image, nullptr);
  EXPECT_EQ(pixelsOf(result), Bytes(16 * 16 * 4));
  EXPECT_EQ(scaleOf(result), 2);
  EXPECT_EQ(caps(result), (std::array<CGFloat, 4>{1, 2, 3, 4}));
  EXPECT_EQ(send<NSInteger>(result, "renderingMode"_sel), 2);
  EXPECT_TRUE(isResizable(result));
}

TEST_F(ColorImages, OfNothingThereIsNeither) {
  auto* empty = make<UIImage>("UIImage");  // without a bitmap its size is zero
  for (UIImage* image : {static_cast<UIImage*>(nullptr), empty}) {
    for (UIColor* color : {rgb(1, 0, 0), static_cast<UIColor*>(nullptr)}) {
      EXPECT_EQ(recolor(image, color), nullptr);
      EXPECT_EQ(tint(image, color), nullptr);
    }
  }
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
}

TEST_F(ColorImages, LeaveTheCurrentContextAlone) {
  UIGraphicsBeginImageContextWithOptions({2, 2}, false, 1);
  CGContextRef context = UIGraphicsGetCurrentContext();
  recolor(everyAlpha(), rgb(1, 0, 0));
  tint(everyAlpha(), rgb(1, 0, 0));
  tint(nullptr, rgb(1, 0, 0));
  EXPECT_EQ(UIGraphicsGetCurrentContext(), context);
  EXPECT_EQ(pixelsOf(UIGraphicsGetImageFromCurrentImageContext()), Bytes(2 * 2 * 4));
  UIGraphicsEndImageContext();
}

TEST_F(ColorImages, AreNewEachTime) {
  UIImage* image = everyAlpha();
  const Bytes before = pixelsOf(image);
  EXPECT_NE(recolor(image, rgb(1, 0, 0)), recolor(image, rgb(1, 0, 0)));
  EXPECT_NE(tint(image, rgb(1, 0, 0)), tint(image, rgb(1, 0, 0)));
  EXPECT_EQ(pixelsOf(image), before);
}

}  // namespace
