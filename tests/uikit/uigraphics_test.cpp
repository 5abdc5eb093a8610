// UIKit's image contexts: sizes and scales, where they begin, and their stack.
#include "UIGraphics/UIGraphics.h"

#include <limits>
#include <thread>

#include "CoreGraphics/CoreGraphics.h"
#include "objc/autorelease_pool.h"
#include "support/bitmaps.h"
#include "support/hosted.h"

namespace {

using test::Bytes;

constexpr CGFloat kNaN = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat kInfinity = std::numeric_limits<CGFloat>::infinity();

CGImageRef bitmapOf(UIImage* image) { return send<CGImageRef>(image, "CGImage"_sel); }
CGFloat scaleOf(UIImage* image) { return send<CGFloat>(image, "scale"_sel); }
UIImage* currentImage() { return UIGraphicsGetImageFromCurrentImageContext(); }

/// The contents of the top context, as premultiplied red, green, blue and alpha.
Bytes currentPixels() { return test::drawn(bitmapOf(currentImage())); }

void fillCurrent(CGFloat red, CGFloat green, CGFloat blue, CGRect rect) {
  CGContextRef context = UIGraphicsGetCurrentContext();
  CGContextSetRGBFillColor(context, red, green, blue, 1);
  CGContextFillRect(context, rect);
}

class UIGraphics : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }
};

TEST_F(UIGraphics, MeasuresInPoints) {
  UIGraphicsBeginImageContextWithOptions({3, 2}, false, 2);
  fillCurrent(1, 0, 0, {{2, 0}, {1, 0.5}});
  EXPECT_EQ(CGImageGetWidth(bitmapOf(currentImage())), 6U);
  EXPECT_EQ(CGImageGetHeight(bitmapOf(currentImage())), 4U);
  EXPECT_EQ(scaleOf(currentImage()), 2);
  Bytes expected(6 * 4 * 4);
  for (std::size_t x : {4U, 5U}) expected[x * 4] = expected[x * 4 + 3] = 255;
  EXPECT_EQ(currentPixels(), expected) << "the upper right one, half a point high";
  UIGraphicsEndImageContext();
}

TEST_F(UIGraphics, TakesTheScreensScaleForNone) {
  UIGraphicsBeginImageContextWithOptions({1, 1}, false, 0);
  EXPECT_EQ(scaleOf(currentImage()), 2);
  EXPECT_EQ(CGImageGetWidth(bitmapOf(currentImage())), 2U);
  UIGraphicsEndImageContext();
  UIGraphicsBeginImageContext({1, 1});
  EXPECT_EQ(scaleOf(currentImage()), 1);
  UIGraphicsEndImageContext();
}

TEST_F(UIGraphics, RoundsSizesUpToPixels) {
  const std::pair<CGFloat, std::size_t> kWidths[] = {{1, 1}, {1.1, 2}, {1.9, 2},
                                                     {2, 2}, {0.1, 1}, {1.0 / 3 * 3, 1}};
  for (const auto& [points, expected] : kWidths) {
    UIGraphicsBeginImageContext({points, 1});
    EXPECT_EQ(CGImageGetWidth(bitmapOf(currentImage())), expected) << points;
    UIGraphicsEndImageContext();
  }
}

TEST_F(UIGraphics, MakesASizeInPointsTheSamePixelsAgain) {
  for (const CGFloat scale : {2.0, 3.0, 7.0, 0.3}) {
    for (std::size_t pixels = 1; pixels < 400; ++pixels) {
      UIGraphicsBeginImageContextWithOptions({static_cast<CGFloat>(pixels) / scale, 1 / scale},
                                             false, scale);
      ASSERT_EQ(CGBitmapContextGetWidth(UIGraphicsGetCurrentContext()), pixels) << scale;
      ASSERT_EQ(CGBitmapContextGetHeight(UIGraphicsGetCurrentContext()), 1U);
      UIGraphicsEndImageContext();
    }
  }
}

TEST_F(UIGraphics, BeginsBlackOrClear) {
  UIGraphicsBeginImageContextWithOptions({1, 1}, true, 1);
  EXPECT_EQ(currentPixels(), (Bytes{0, 0, 0, 255}));
  EXPECT_EQ(CGImageGetAlphaInfo(bitmapOf(currentImage())), kCGImageAlphaNoneSkipFirst);
  // Nothing can make an opaque context transparent.
  CGContextClearRect(UIGraphicsGetCurrentContext(), {{0, 0}, {1, 1}});
  EXPECT_EQ(currentPixels(), (Bytes{0, 0, 0, 255}));
  UIGraphicsEndImageContext();
  UIGraphicsBeginImageContextWithOptions({1, 1}, false, 1);
  EXPECT_EQ(currentPixels(), Bytes(4));
  EXPECT_EQ(CGImageGetAlphaInfo(bitmapOf(currentImage())), kCGImageAlphaPremultipliedFirst);
  UIGraphicsEndImageContext();
}

TEST_F(UIGraphics, CopiesWhatIsDrawnSoFar) {
  UIGraphicsBeginImageContext({1, 1});
  fillCurrent(1, 0, 0, {{0, 0}, {1, 1}});
  UIImage* red = currentImage();
  fillCurrent(0, 1, 0, {{0, 0}, {1, 1}});
  UIGraphicsEndImageContext();
  EXPECT_EQ(test::drawn(bitmapOf(red)), (Bytes{255, 0, 0, 255}));
}

TEST_F(UIGraphics, StacksItsContexts) {
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
  EXPECT_EQ(currentImage(), nullptr);
  UIGraphicsBeginImageContext({1, 1});
  UIGraphicsBeginImageContext({2, 1});
  fillCurrent(1, 0, 0, {{0, 0}, {2, 1}});
  UIGraphicsEndImageContext();
  EXPECT_EQ(currentPixels(), Bytes(4));
  UIGraphicsEndImageContext();
  UIGraphicsEndImageContext();  // one too many
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
  EXPECT_EQ(currentImage(), nullptr);
}

TEST_F(UIGraphics, KeepsTheStackWhereThereIsNoSuchSize) {
  struct {
    CGSize size;
    CGFloat scale;
  } const kCases[] = {
      {{0, 1}, 1},           {{1, 0}, 1},     {{-1, 1}, 1},        {{1, -1}, 1},
      {{kNaN, 1}, 1},        {{1, kNaN}, 1},  {{kInfinity, 1}, 1}, {{1, -kInfinity}, 1},
      {{1e9, 1}, 1},         {{1, 1e300}, 1}, {{32'768, 1}, 1},    {{16'384, 1}, 2},
      {{32'767, 32'767}, 1}, {{1, 1}, kNaN},  {{1, 1}, kInfinity}, {{-1, -1}, -1},
      {{1, 1}, -1},          {{1, 1}, 1e-9},
  };
  UIGraphicsBeginImageContext({1, 1});
  CGContextRef outer = UIGraphicsGetCurrentContext();
  for (const auto& c : kCases) {
    UIGraphicsBeginImageContextWithOptions(c.size, false, c.scale);
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr) << c.size.width << ' ' << c.scale;
    EXPECT_EQ(currentImage(), nullptr);
    fillCurrent(1, 0, 0, {{0, 0}, {9, 9}});
    UIGraphicsEndImageContext();
    EXPECT_EQ(UIGraphicsGetCurrentContext(), outer);
  }
  EXPECT_EQ(currentPixels(), Bytes(4));
  UIGraphicsEndImageContext();
}

TEST_F(UIGraphics, DrawsIntoAPushedContext) {
  Bytes bytes;
  {
    const test::Context own(test::createContext(bytes, 1, 2));
    UIGraphicsPushContext(own);
  }
  fillCurrent(1, 0, 0, {{0, 0}, {1, 1}});
  EXPECT_EQ(bytes, (Bytes{0, 0, 0, 0, 255, 0, 0, 255})) << "its origin where its maker has it";
  EXPECT_EQ(currentImage(), nullptr) << "no image context";
  UIGraphicsEndImageContext();  // none was begun: nothing happens
  EXPECT_NE(UIGraphicsGetCurrentContext(), nullptr);
  UIGraphicsPopContext();
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
  UIGraphicsPopContext();
  UIGraphicsBeginImageContext({1, 1});
  UIGraphicsPopContext();  // none was pushed: nothing happens
  EXPECT_NE(UIGraphicsGetCurrentContext(), nullptr);
  UIGraphicsPushContext(nullptr);
  EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
  UIGraphicsPopContext();
  UIGraphicsEndImageContext();
}

TEST_F(UIGraphics, LeavesAContextToWhoeverRetainsIt) {
  UIGraphicsBeginImageContext({1, 1});
  const test::Context kept(CGContextRetain(UIGraphicsGetCurrentContext()));
  UIGraphicsEndImageContext();
  CGContextFillRect(kept, {{0, 0}, {1, 1}});
  EXPECT_EQ(test::drawn(test::Bitmap(CGBitmapContextCreateImage(kept))), (Bytes{0, 0, 0, 255}));
}

TEST(UIGraphicsWithoutUIKit, HasContextsButNoImages) {
  UIGraphicsBeginImageContext({1, 1});
  EXPECT_NE(UIGraphicsGetCurrentContext(), nullptr);
  EXPECT_EQ(currentImage(), nullptr);
  UIGraphicsEndImageContext();
  EXPECT_EQ(UIImageJPEGRepresentation(nullptr, 1), nullptr);
  EXPECT_EQ(UIImagePNGRepresentation(nullptr), nullptr);
}

}  // namespace
