// Contexts with rectangles, transforms and sizes that make no sense.
#include <gtest/gtest.h>

#include <limits>

#include "support/bitmaps.h"

namespace {

using test::Bytes;
using test::kHuge;

constexpr CGFloat kNaN = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat kInfinity = std::numeric_limits<CGFloat>::infinity();
constexpr CGFloat kStrange[] = {kNaN, kInfinity, -kInfinity, kHuge, -kHuge, test::kTiny, 0};

const Bytes kRedDot{255, 0, 0, 255};

/// An empty bitmap of four by four pixels.
struct Canvas {
  Bytes bytes;
  test::Context context{test::createContext(bytes, 4, 4)};

  bool isClear() const { return bytes == Bytes(64); }
  /// Whether drawing still works: makes the pixel at the upper right blue.
  bool works() {
    CGContextSetRGBFillColor(context, 0, 0, 1, 1);
    CGContextFillRect(context, {{3, 3}, {1, 1}});
    return Bytes(bytes.begin() + 12, bytes.begin() + 16) == Bytes{0, 0, 255, 255};
  }
};

Bytes all(std::size_t pixels, const Bytes& pixel) {
  Bytes bytes;
  for (std::size_t i = 0; i < pixels; ++i) bytes.insert(bytes.end(), pixel.begin(), pixel.end());
  return bytes;
}

TEST(Hostile, RectanglesWithoutAreaOrPlaceAreNotDrawn) {
  const test::Bitmap image(test::createImage(kRedDot, {}));
  Canvas canvas;
  for (const CGFloat strange : kStrange) {
    for (const CGRect rect : {CGRect{{strange, 0}, {1e-300, 1}}, CGRect{{0, strange}, {1, 0}},
                              CGRect{{kNaN, 0}, {strange, 1}}, CGRect{{0, 1}, {strange, kNaN}},
                              CGRect{{-kInfinity, 0}, {kInfinity, 1}}}) {
      CGContextDrawImage(canvas.context, rect, image);
      CGContextFillRect(canvas.context, rect);
      CGContextClearRect(canvas.context, rect);
      ASSERT_TRUE(canvas.isClear()) << rect.origin.x << ' ' << rect.size.width;
    }
  }
  EXPECT_TRUE(canvas.works());
}

TEST(Hostile, RectanglesFarLargerThanTheBitmapCoverIt) {
  const test::Bitmap image(test::createImage(kRedDot, {}));
  for (const CGFloat side : {1e3, 1e5, 1e7, 1e9, 1e12, 1e15}) {
    const CGRect rect = {{-side / 2, -side / 2}, {side, side}};
    Canvas drawn;
    CGContextDrawImage(drawn.context, rect, image);
    EXPECT_EQ(drawn.bytes, all(16, kRedDot)) << side;
    EXPECT_TRUE(drawn.works()) << side;
    Canvas filled;
    CGContextSetRGBFillColor(filled.context, 1, 0, 0, 1);
    CGContextFillRect(filled.context, rect);
    EXPECT_EQ(filled.bytes, all(16, kRedDot)) << side;
    EXPECT_TRUE(filled.works()) << side;
  }
}

TEST(Hostile, LargeImagesFarEnlargedDoNotHarm) {
  const test::Bitmap image(test::createImage(all(64 * 64, kRedDot), {.width = 64, .height = 64}));
  for (const CGFloat side : {1e4, 1e6, 1e8, 1e10, 1e14, 1e18}) {
    for (const CGFloat corner : {CGFloat{0}, -side / 2, -side * 3 / 4}) {
      Canvas canvas;
      CGContextDrawImage(canvas.context, {{corner, corner}, {side, side}}, image);
      EXPECT_EQ(canvas.bytes, all(16, kRedDot)) << side << ' ' << corner;
      EXPECT_TRUE(canvas.works());
    }
  }
}

TEST(Hostile, ImagesFarSmallerThanAPixelHardlyShow) {
  const test::Bitmap image(test::createImage(all(64 * 64, kRedDot), {.width = 64, .height = 64}));
  for (const CGFloat side : {1e-3, 1e-6, 1e-9, 1e-12, 1e-200}) {
    Canvas canvas;
    CGContextDrawImage(canvas.context, {{0.5, 0.5}, {side, side}}, image);
    EXPECT_LE(canvas.bytes[3 * 16 + 3], 1) << side;
    EXPECT_TRUE(canvas.works()) << side;
  }
}

TEST(Hostile, NothingIsDrawnUnderATransformThatCannotBeUndone) {
  const test::Bitmap image(test::createImage(kRedDot, {}));
  using Transform = void (*)(CGContextRef, CGFloat);
  const Transform kTransforms[] = {
      [](CGContextRef context, CGFloat by) { CGContextScaleCTM(context, by, 1); },
      [](CGContextRef context, CGFloat by) { CGContextScaleCTM(context, by, by); },
      [](CGContextRef context, CGFloat by) { CGContextConcatCTM(context, {by, by, by, by, 0, 0}); },
  };
  for (const Transform transform : kTransforms) {
    for (const CGFloat strange : kStrange) {
      Canvas canvas;
      CGContextSaveGState(canvas.context);
      transform(canvas.context, strange);
      CGContextTranslateCTM(canvas.context, 1, 1);
      CGContextScaleCTM(canvas.context, 2, 2);
      CGContextDrawImage(canvas.context, {{0, 0}, {1, 1}}, image);
      CGContextFillRect(canvas.context, {{0, 0}, {1, 1}});
      EXPECT_TRUE(canvas.isClear()) << strange;
      CGContextRestoreGState(canvas.context);
      EXPECT_TRUE(canvas.works()) << strange;
    }
  }
}

TEST(Hostile, NothingIsDrawnAnInfinityAway) {
  for (const CGFloat strange : {kNaN, kInfinity, -kInfinity, kHuge}) {
    Canvas canvas;
    CGContextSaveGState(canvas.context);
    CGContextTranslateCTM(canvas.context, strange, 0);
    CGContextFillRect(canvas.context, {{0, 0}, {4, 4}});
    EXPECT_TRUE(canvas.isClear());
    CGContextRestoreGState(canvas.context);
    CGContextSaveGState(canvas.context);
    CGContextRotateCTM(canvas.context, kInfinity);
    CGContextFillRect(canvas.context, {{0, 0}, {4, 4}});
    EXPECT_TRUE(canvas.isClear());
    CGContextRestoreGState(canvas.context);
    EXPECT_TRUE(canvas.works());
  }
}

TEST(Hostile, ColorsAndAlphaStayWithinTheirRange) {
  Canvas canvas;
  CGContextSetRGBFillColor(canvas.context, kNaN, 7, -7, kInfinity);
  CGContextFillRect(canvas.context, {{0, 0}, {4, 4}});
  EXPECT_EQ(canvas.bytes, all(16, {0, 255, 0, 255}));
  CGContextSetAlpha(canvas.context, kNaN);
  CGContextSetRGBFillColor(canvas.context, 1, 0, 0, 1);
  CGContextFillRect(canvas.context, {{0, 0}, {4, 4}});
  EXPECT_EQ(canvas.bytes, all(16, {0, 255, 0, 255}));
}

TEST(Hostile, ContextsBeyondMemoryAreNone) {
  const test::Space space(CGColorSpaceCreateDeviceRGB());
  const std::size_t kSides[] = {32767, 32768, SIZE_MAX / 4, SIZE_MAX};
  for (const std::size_t side : kSides) {
    EXPECT_EQ(CGBitmapContextCreate(nullptr, side, side, 8, 0, space, test::kBgra), nullptr)
        << side;
    EXPECT_EQ(CGBitmapContextCreate(nullptr, 1, side, 8, SIZE_MAX / 2, space, test::kBgra), nullptr)
        << side;
  }
}

TEST(Hostile, RestoringWhatWasNotSavedIsNothing) {
  Canvas canvas;
  for (int i = 0; i < 3; ++i) CGContextRestoreGState(canvas.context);
  CGContextSaveGState(canvas.context);
  for (int i = 0; i < 3; ++i) CGContextRestoreGState(canvas.context);
  EXPECT_TRUE(canvas.works());
}

}  // namespace
