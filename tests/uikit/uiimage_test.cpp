// Images and image contexts: sizes, scales, orientations, opacity, and JPEG data.
#include <limits>
#include <thread>

#include "CoreGraphics/CoreGraphics.h"
#include "objc/autorelease_pool.h"
#include "support/hosted.h"
#include "support/pictures.h"

namespace {

using test::Pixel;
using Pixels = std::vector<Pixel>;

/// Four colours, in reading order.
constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kGreen{0, 255, 0, 255};
constexpr Pixel kBlue{0, 0, 255, 255};
constexpr Pixel kWhite{255, 255, 255, 255};

class Images : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  static Pixels pixelsOf(UIImage* image) {
    auto bitmap = send<CGImageRef>(image, "CGImage"_sel);
    const std::size_t width = CGImageGetWidth(bitmap);
    const std::size_t height = CGImageGetHeight(bitmap);
    Pixels pixels(width * height);
    const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
    const objc::Owned<CGContextRef, &CGContextRelease> context(CGBitmapContextCreate(
        pixels.data(), width, height, 8, width * 4, space, kCGImageAlphaPremultipliedLast));
    CGContextDrawImage(
        context, {{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}}, bitmap);
    return pixels;
  }
  static UIImage* fourColors() {
    const Pixels all{kRed, kGreen, kBlue, kWhite};
    return test::picture(2, 2, [&](std::size_t x, std::size_t y) { return all[y * 2 + x]; });
  }
  static UIImage* turned(UIImage* image, NSInteger orientation, CGFloat scale = 1) {
    return send<UIImage*>(objc_getClass("UIImage"), "imageWithCGImage:scale:orientation:"_sel,
                          send<CGImageRef>(image, "CGImage"_sel), scale, orientation);
  }
  static CGSize sizeOf(UIImage* image) { return send<CGSize>(image, "size"_sel); }
};

/// The contents of a context of that size after drawing into it.
template <class F>
UIImage* drawnIn(CGSize size, bool opaque, CGFloat scale, F draw) {
  UIGraphicsBeginImageContextWithOptions(size, opaque, scale);
  draw();
  UIImage* image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return image;
}

TEST_F(Images, DrawUprightFromTheUpperLeft) {
  UIImage* image =
      drawnIn({3, 2}, false, 1, [] { send(fourColors(), UIImage::drawInRect, {{1, 0}, {2, 2}}); });
  EXPECT_EQ(pixelsOf(image), (Pixels{Pixel{}, kRed, kGreen, Pixel{}, kBlue, kWhite}));
}

TEST_F(Images, DrawAsTheirOrientationSays) {
  const Pixels kExpected[] = {
      {kRed, kGreen, kBlue, kWhite},  // up
      {kWhite, kBlue, kGreen, kRed},  // down
      {kGreen, kWhite, kRed, kBlue},  // left: a quarter turn counter-clockwise
      {kBlue, kRed, kWhite, kGreen},  // right: clockwise
      {kGreen, kRed, kWhite, kBlue},  // mirrored left to right
      {kBlue, kWhite, kRed, kGreen},  // mirrored, then turned upside down
      {kRed, kBlue, kGreen, kWhite},  // mirrored, then counter-clockwise
      {kWhite, kGreen, kBlue, kRed},  // mirrored, then clockwise
  };
  for (NSInteger orientation = 0; orientation < 8; ++orientation) {
    UIImage* image = drawnIn({2, 2}, false, 1, [&] {
      send(turned(fourColors(), orientation), UIImage::drawInRect, {{0, 0}, {2, 2}});
    });
    EXPECT_EQ(pixelsOf(image), kExpected[orientation]) << orientation;
  }
}

TEST_F(Images, HaveTheirSizeInPointsAsShown) {
  UIImage* wide = test::picture(40, 20, [](auto, auto) { return kRed; });
  EXPECT_EQ(sizeOf(wide).width, 40);
  EXPECT_EQ(sizeOf(turned(wide, 0, 2)).width, 20);
  EXPECT_EQ(sizeOf(turned(wide, 0, 2)).height, 10);
  EXPECT_EQ(sizeOf(turned(wide, 3)).width, 20);
  EXPECT_EQ(sizeOf(turned(wide, 3)).height, 40);
}

TEST_F(Images, ContextsHaveTheirScale) {
  UIImage* image = drawnIn({3, 2}, false, 2, [] {});
  EXPECT_EQ(CGImageGetWidth(send<CGImageRef>(image, "CGImage"_sel)), 6U);
  EXPECT_EQ(send<CGFloat>(image, "scale"_sel), 2);
  EXPECT_EQ(sizeOf(image).width, 3);
  EXPECT_EQ(send<CGFloat>(drawnIn({1, 1}, false, 0, [] {}), "scale"_sel), 2) << "the screen's";
}

TEST_F(Images, OpaqueContextsBeginBlackOthersClear) {
  EXPECT_EQ(pixelsOf(drawnIn({1, 1}, true, 1, [] {})), (Pixels{{0, 0, 0, 255}}));
  EXPECT_EQ(pixelsOf(drawnIn({1, 1}, false, 1, [] {})), Pixels{Pixel{}});
  auto bitmap = send<CGImageRef>(drawnIn({1, 1}, true, 1, [] {}), "CGImage"_sel);
  EXPECT_EQ(CGImageGetAlphaInfo(bitmap), kCGImageAlphaNoneSkipFirst);
}

TEST_F(Images, ContextsStack) {
  UIGraphicsBeginImageContextWithOptions({1, 1}, true, 1);
  UIImage* inner =
      drawnIn({2, 2}, false, 1, [] { send(fourColors(), UIImage::drawInRect, {{0, 0}, {2, 2}}); });
  EXPECT_EQ(pixelsOf(inner).size(), 4U);
  EXPECT_EQ(pixelsOf(UIGraphicsGetImageFromCurrentImageContext()), (Pixels{{0, 0, 0, 255}}));
  UIGraphicsEndImageContext();
  EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nullptr);
  UIGraphicsEndImageContext();  // one too many
}

TEST_F(Images, StrangeSizesAreNoContextButKeepTheStack) {
  const CGFloat kStrange[] = {0, -1, 1e9, std::numeric_limits<CGFloat>::quiet_NaN(),
                              std::numeric_limits<CGFloat>::infinity()};
  for (CGFloat side : kStrange) {
    UIGraphicsBeginImageContextWithOptions({1, 1}, true, 1);
    UIGraphicsBeginImageContextWithOptions({side, side}, false, 1);
    EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nullptr) << side;
    send(fourColors(), UIImage::drawInRect, {{0, 0}, {2, 2}});
    UIGraphicsEndImageContext();
    EXPECT_NE(UIGraphicsGetImageFromCurrentImageContext(), nullptr);
    UIGraphicsEndImageContext();
  }
}

TEST_F(Images, ThreadsHaveStacksOfTheirOwn) {
  UIGraphicsBeginImageContextWithOptions({1, 1}, true, 1);
  std::thread([] {
    objc::AutoreleasePool pool;
    EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nullptr);
    UIGraphicsEndImageContext();
  }).join();
  EXPECT_NE(UIGraphicsGetImageFromCurrentImageContext(), nullptr);
  UIGraphicsEndImageContext();
}

TEST_F(Images, JpegDataComesBackAsTheImage) {
  UIImage* image = test::picture(16, 16, [](auto, auto) { return Pixel{200, 60, 20, 255}; });
  NSData* data = UIImageJPEGRepresentation(image, 1);
  ASSERT_NE(data, nullptr);
  auto* again = send<UIImage*>(objc_getClass("UIImage"), "imageWithData:"_sel, data);
  for (const Pixel& pixel : pixelsOf(again)) {
    EXPECT_NEAR(pixel[0], 200, 2);
    EXPECT_NEAR(pixel[1], 60, 2);
    EXPECT_NEAR(pixel[2], 20, 2);
    EXPECT_EQ(pixel[3], 255);
  }
}

TEST_F(Images, JpegDataIsLaidOnWhite) {
  UIImage* clear = test::picture(8, 8, [](auto, auto) { return Pixel{}; });
  UIImage* half = test::picture(8, 8, [](auto, auto) { return Pixel{128, 0, 0, 128}; });
  auto middle = [](UIImage* image) {
    NSData* data = UIImageJPEGRepresentation(image, 1);
    return pixelsOf(send<UIImage*>(objc_getClass("UIImage"), "imageWithData:"_sel, data))[27];
  };
  EXPECT_EQ(middle(clear), kWhite);
  EXPECT_NEAR(middle(half)[0], 255, 2);
  EXPECT_NEAR(middle(half)[1], 127, 3);
}

TEST_F(Images, NoImageIsNoData) {
  EXPECT_EQ(UIImageJPEGRepresentation(nullptr, 1), nullptr);
  auto* none = send<UIImage*>(objc_getClass("UIImage"), "imageWithData:"_sel,
                              NSData::dataWithBytes("no picture", 10));
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(
      send<UIImage*>(objc::alloc<UIImage>(), "initWithData:"_sel, static_cast<NSData*>(nullptr)),
      nullptr);
  EXPECT_EQ(UIImage::imageWithCGImage(nullptr), nullptr);
}

}  // namespace
