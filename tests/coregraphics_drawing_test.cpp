// Drawing: where it lands, how it mixes with what was there, and what cannot be drawn.
#include <gtest/gtest.h>

#include <limits>
#include <thread>

#include "support/bitmaps.h"

namespace {

using namespace test;

constexpr CGFloat kNan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat kInfinity = std::numeric_limits<CGFloat>::infinity();

/// A bitmap whose pixels are read as letters: one for each pure colour.
class Drawing : public testing::Test {
 protected:
  /// The rows from the top, as "rg/b.".
  std::string shown() const {
    std::string letters;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
      if (i != 0 && i % (kSide * 4) == 0) letters += '/';
      letters += letterOf(Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(i),
                                bytes.begin() + static_cast<std::ptrdiff_t>(i) + 4));
    }
    return letters;
  }
  static char letterOf(const Bytes& pixel) {
    const std::pair<Bytes, char> kColors[] = {
        {{0, 0, 0, 0}, '.'},       {{255, 0, 0, 255}, 'r'}, {{0, 255, 0, 255}, 'g'},
        {{0, 0, 255, 255}, 'b'},   {{0, 0, 0, 255}, 'k'},   {{255, 255, 255, 255}, 'w'},
        {{255, 255, 0, 255}, 'y'},
    };
    for (const auto& [color, letter] : kColors) {
      if (color == pixel) return letter;
    }
    return '?';
  }
  void fillRed(CGRect rect) {
    CGContextSetRGBFillColor(context, 1, 0, 0, 1);
    CGContextFillRect(context, rect);
  }
  Bytes pixel(std::size_t x, std::size_t y) const {
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t>((y * kSide + x) * 4);
    return {at, at + 4};
  }
  /// Red and green above blue and white. Owned by the caller.
  static CGImageRef createFourColors() {
    return createImage({255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255},
                       {.width = 2, .height = 2});
  }

  static constexpr std::size_t kSide = 3;
  Bytes bytes;
  const Context context{createContext(bytes, kSide, kSide)};
  const Bitmap fourColors{createFourColors()};
};

TEST_F(Drawing, BeginsAtTheLowerLeft) {
  fillRed({{0, 0}, {2, 1}});
  EXPECT_EQ(shown(), ".../.../rr.");
}

TEST_F(Drawing, ShowsImagesUpright) {
  CGContextDrawImage(context, {{1, 0}, {2, 2}}, fourColors);
  EXPECT_EQ(shown(), ".../.rg/.bw");
}

TEST_F(Drawing, DrawsImagesOverTheEdge) {
  CGContextDrawImage(context, {{2, 2}, {2, 2}}, fourColors);
  CGContextDrawImage(context, {{-1, -1}, {2, 2}}, fourColors);
  EXPECT_EQ(shown(), "..b/.../g..");
}

TEST_F(Drawing, MovesAndStretches) {
  CGContextTranslateCTM(context, 1, 1);
  CGContextScaleCTM(context, 2, 1);
  fillRed({{0, 0}, {1, 1}});
  EXPECT_EQ(shown(), ".../.rr/...");
}

TEST_F(Drawing, PutsTransformsBeforeOneAnother) {
  CGContextScaleCTM(context, 2, 2);
  CGContextTranslateCTM(context, 0.5, 0.5);
  CGContextConcatCTM(context, {0.5, 0, 0, 0.5, 0.5, 0});
  fillRed({{0, 0}, {1, 1}});
  EXPECT_EQ(shown(), ".../..r/...") << "moved by a half, twice over, then by one";
}

TEST_F(Drawing, MirrorsAndTurnsImagesPixelForPixel) {
  const struct {
    CGAffineTransform transform;
    const char* expected;
  } kCases[] = {
      {{1, 0, 0, -1, 0, 3}, "bw./rg./..."},   // upside down
      {{-1, 0, 0, 1, 3, 0}, ".../.gr/.wb"},   // mirrored
      {{0, 1, -1, 0, 3, 0}, ".../.gw/.rb"},   // a quarter turn counter-clockwise
      {{0, -1, 1, 0, 0, 3}, "br./wg./..."},   // clockwise
      {{-1, 0, 0, -1, 3, 3}, ".wb/.gr/..."},  // half a turn
  };
  for (const auto& c : kCases) {
    CGContextClearRect(context, {{0, 0}, {3, 3}});
    CGContextSaveGState(context);
    CGContextConcatCTM(context, c.transform);
    CGContextDrawImage(context, {{0, 0}, {2, 2}}, fourColors);
    CGContextRestoreGState(context);
    EXPECT_EQ(shown(), c.expected);
  }
}

TEST_F(Drawing, RepeatsNothingBeyondTheEdgeOfAnEnlargedImage) {
  const Bytes pixel{10, 20, 30, 40};
  const Bytes all = drawn(Bitmap(createImage(pixel, {})), 7, 5);
  for (std::size_t i = 0; i < all.size(); ++i) ASSERT_EQ(all[i], pixel[i % 4]) << i;
}

TEST_F(Drawing, EnlargesSmoothlyUnlessToldNotTo) {
  const Bitmap image(createImage({0, 0, 0, 255, 255, 255, 255, 255}, {.width = 2}));
  const Bytes smooth = drawn(image, 8, 1);
  for (std::size_t x = 1; x < 8; ++x) EXPECT_GE(smooth[x * 4], smooth[x * 4 - 4]);
  EXPECT_GT(smooth[3 * 4], 64);
  EXPECT_LT(smooth[3 * 4], 128);
  Bytes sharp;
  const Context eight(createContext(sharp, 8, 1));
  CGContextSetInterpolationQuality(eight, CGInterpolationQuality::none);
  CGContextDrawImage(eight, {{0, 0}, {8, 1}}, image);
  for (std::size_t x = 0; x < 8; ++x) EXPECT_EQ(sharp[x * 4], x < 4 ? 0 : 255) << x;
}

TEST_F(Drawing, AnswersTheTransform) {
  auto parts = [this] {
    const CGAffineTransform t = CGContextGetCTM(context);
    return std::vector<CGFloat>{t.a, t.b, t.c, t.d, t.tx, t.ty};
  };
  EXPECT_EQ(parts(), (std::vector<CGFloat>{1, 0, 0, 1, 0, 0}));
  CGContextTranslateCTM(context, 5, 6);
  CGContextScaleCTM(context, 2, -3);
  EXPECT_EQ(parts(), (std::vector<CGFloat>{2, 0, 0, -3, 5, 6}));
  CGContextConcatCTM(context, {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(parts(), (std::vector<CGFloat>{2, -6, 6, -12, 15, -12}));
  EXPECT_EQ(CGContextGetCTM(nullptr).a, 1);
}

TEST_F(Drawing, DrawsNothingOnceTheTransformHasNoArea) {
  const CGAffineTransform kTransforms[] = {
      {0, 0, 0, 1, 0, 0},         {1, 0, 0, 0, 0, 0},           {1, 1, 1, 1, 0, 0},
      {kNan, 0, 0, 1, 0, 0},      {1, 0, 0, 1, 0, kNan},        {kInfinity, 0, 0, 1, 0, 0},
      {1e300, 0, 0, 1e300, 0, 0}, {1e-300, 0, 0, 1e-300, 0, 0},
  };
  for (const CGAffineTransform& transform : kTransforms) {
    CGContextSaveGState(context);
    CGContextConcatCTM(context, transform);
    fillRed({{0, 0}, {3, 3}});
    CGContextDrawImage(context, {{0, 0}, {3, 3}}, fourColors);
    CGContextTranslateCTM(context, 1, 1);
    fillRed({{0, 0}, {3, 3}});
    CGContextRestoreGState(context);
    ASSERT_EQ(shown(), ".../.../...");
  }
  fillRed({{0, 0}, {1, 1}});
  EXPECT_EQ(shown(), ".../.../r..");
}

TEST_F(Drawing, SavesAndRestoresItsState) {
  CGContextSetRGBFillColor(context, 0, 1, 0, 1);
  CGContextSaveGState(context);
  CGContextTranslateCTM(context, 0, 1);
  CGContextClipToRect(context, {{0, 0}, {1, 1}});
  CGContextSetAlpha(context, 0.5);
  CGContextSetBlendMode(context, CGBlendMode{16});
  CGContextSetRGBFillColor(context, 1, 0, 0, 1);
  CGContextRestoreGState(context);
  CGContextFillRect(context, {{0, 0}, {3, 1}});
  EXPECT_EQ(shown(), ".../.../ggg");
}

TEST_F(Drawing, RestoresNoMoreThanItSaved) {
  CGContextRestoreGState(context);
  CGContextSaveGState(context);
  CGContextRestoreGState(context);
  CGContextRestoreGState(context);
  fillRed({{0, 0}, {1, 1}});
  EXPECT_EQ(shown(), ".../.../r..");
}

TEST_F(Drawing, MayBeReleasedWithStatesSaved) {
  Bytes memory;
  const Context other(createContext(memory, 1, 1));
  for (int i = 0; i < 100; ++i) CGContextSaveGState(other);
  CGContextFillRect(other, {{0, 0}, {1, 1}});
  EXPECT_EQ(memory, (Bytes{0, 0, 0, 255}));
}

TEST_F(Drawing, FillsWithColorsOfEitherSpace) {
  const Space rgb(CGColorSpaceCreateDeviceRGB());
  const Space grey(CGColorSpaceCreateDeviceGray());
  const CGFloat components[] = {1, 1, 0, 1};
  using Color = objc::Owned<CGColorRef, &CGColorRelease>;
  const Color yellow(CGColorCreate(rgb, components));
  const Color white(CGColorCreate(grey, components));
  CGContextSetFillColorWithColor(context, yellow);
  CGContextFillRect(context, {{0, 0}, {1, 1}});
  CGContextSetFillColorWithColor(context, white);
  CGContextFillRect(context, {{1, 0}, {1, 1}});
  CGContextSetFillColorWithColor(context, nullptr);  // nothing changes
  CGContextFillRect(context, {{2, 0}, {1, 1}});
  EXPECT_EQ(shown(), ".../.../yww");
}

TEST_F(Drawing, MixesByAlpha) {
  CGContextSetRGBFillColor(context, 1, 1, 1, 0.4);
  CGContextSetAlpha(context, 0.5);
  CGContextFillRect(context, {{0, 0}, {1, 1}});
  EXPECT_EQ(pixel(0, 2), Bytes(4, 51));
  CGContextDrawImage(context, {{1, 0}, {2, 2}}, fourColors);
  EXPECT_EQ(pixel(1, 1), (Bytes{128, 0, 0, 128}));
  CGContextSetAlpha(context, 7);
  CGContextSetRGBFillColor(context, 5, -3, kNan, kInfinity);
  CGContextFillRect(context, {{0, 2}, {1, 1}});
  EXPECT_EQ(pixel(0, 0), (Bytes{255, 0, 0, 255}));
  CGContextSetAlpha(context, kNan);
  CGContextFillRect(context, {{2, 2}, {1, 1}});
  EXPECT_EQ(pixel(2, 0), Bytes(4)) << "no number is no alpha";
}

TEST_F(Drawing, CoversPartOfAPixelByItsArea) {
  fillRed({{0, 0}, {0.5, 1}});
  EXPECT_NEAR(pixel(0, 2)[3], 128, 1);
  CGContextSetShouldAntialias(context, false);
  fillRed({{1, 0}, {0.75, 1}});
  EXPECT_EQ(pixel(1, 2)[3], 255);
}

TEST_F(Drawing, KeepsWithinTheClip) {
  CGContextClipToRect(context, {{1, 0}, {2, 3}});
  CGContextClipToRect(context, {{0, 1}, {2, 2}});
  fillRed({{0, 0}, {3, 3}});
  EXPECT_EQ(shown(), ".r./.r./...");
  CGContextClearRect(context, {{0, 2}, {3, 1}});
  EXPECT_EQ(shown(), ".../.r./...");
  CGContextClipToRect(context, {{0, 0}, {1, 1}});  // nothing is left
  CGContextDrawImage(context, {{0, 0}, {3, 3}}, fourColors);
  EXPECT_EQ(shown(), ".../.r./...");
}

/// Green at a half is drawn on opaque red and on nothing, beside a pixel that is not drawn on.
TEST_F(Drawing, MixesAsTheBlendModeSays) {
  const struct {
    std::int32_t mode;
    Bytes onRed, onNothing;
  } kCases[] = {
      {0, {127, 128, 0, 255}, {0, 128, 0, 128}},   // normal
      {1, {127, 0, 0, 255}, {0, 128, 0, 128}},     // multiply
      {2, {255, 128, 0, 255}, {0, 128, 0, 128}},   // screen
      {16, {0, 0, 0, 0}, {0, 0, 0, 0}},            // clear
      {17, {0, 128, 0, 128}, {0, 128, 0, 128}},    // copy
      {18, {0, 128, 0, 128}, {0, 0, 0, 0}},        // source in
      {19, {0, 0, 0, 0}, {0, 128, 0, 128}},        // source out
      {20, {127, 128, 0, 255}, {0, 0, 0, 0}},      // source atop
      {21, {255, 0, 0, 255}, {0, 128, 0, 128}},    // destination over
      {22, {128, 0, 0, 128}, {0, 0, 0, 0}},        // destination in
      {23, {127, 0, 0, 127}, {0, 0, 0, 0}},        // destination out
      {24, {128, 0, 0, 128}, {0, 128, 0, 128}},    // destination atop
      {25, {127, 0, 0, 127}, {0, 128, 0, 128}},    // exclusive or
      {27, {255, 128, 0, 255}, {0, 128, 0, 128}},  // plus lighter
      {28, {127, 128, 0, 255}, {0, 128, 0, 128}},  // unknown, and the one before stays: normal
      {-1, {127, 128, 0, 255}, {0, 128, 0, 128}},
  };
  const Bitmap green(createImage({0, 128, 0, 128}, {}));
  for (const auto& c : kCases) {
    for (const bool isImage : {false, true}) {
      CGContextClearRect(context, {{0, 0}, {3, 3}});
      fillRed({{0, 0}, {1, 1}});
      fillRed({{0, 2}, {1, 1}});
      CGContextSaveGState(context);
      CGContextSetBlendMode(context, CGBlendMode{c.mode});
      CGContextSetRGBFillColor(context, 0, 1, 0, 128.0 / 255);
      for (CGFloat x : {0, 1}) {
        const CGRect rect{{x, 0}, {1, 1}};
        isImage ? CGContextDrawImage(context, rect, green) : CGContextFillRect(context, rect);
      }
      CGContextRestoreGState(context);
      EXPECT_EQ(pixel(0, 2), c.onRed) << c.mode << (isImage ? " image" : "");
      EXPECT_EQ(pixel(1, 2), c.onNothing) << c.mode << (isImage ? " image" : "");
      EXPECT_EQ(shown().substr(0, 8), "r../.../") << c.mode;
    }
  }
}

TEST_F(Drawing, TakesAnyRectangle) {
  const CGRect kNothing[] = {
      {{0, 0}, {0, 3}},      {{0, 0}, {3, 0}},         {{kNan, 0}, {3, 3}},
      {{0, 0}, {3, kNan}},   {{0, 0}, {kNan, kNan}},   {{1e9, 0}, {3, 3}},
      {{0, -1e300}, {3, 3}}, {{kInfinity, 0}, {3, 3}}, {{-kInfinity, 0}, {kInfinity, 3}},
  };
  for (const CGRect& rect : kNothing) {
    fillRed(rect);
    CGContextDrawImage(context, rect, fourColors);
    EXPECT_EQ(shown(), ".../.../...") << rect.origin.x << ' ' << rect.size.width;
  }
  const CGRect kAll[] = {
      {{-1e300, -1e300}, {2e300, 2e300}}, {{-1e9, -1e9}, {2e9, 2e9}}, {{3, 3}, {-3, -3}}};
  for (const CGRect& rect : kAll) {
    CGContextClearRect(context, rect);
    EXPECT_EQ(shown(), ".../.../...");
    CGContextDrawImage(context, rect, fourColors);  // whatever comes of it
    fillRed(rect);
    EXPECT_EQ(shown(), "rrr/rrr/rrr") << rect.size.width;
  }
}

TEST_F(Drawing, TakesAnImageDrawnFarTooLarge) {
  const Bitmap red(createImage({255, 0, 0, 255}, {}));
  for (const CGFloat side : {1e4, 1e6, 1e9}) {
    CGContextClearRect(context, {{0, 0}, {3, 3}});
    CGContextDrawImage(context, {{-side, -side}, {2 * side, 2 * side}}, red);
    EXPECT_EQ(shown(), "rrr/rrr/rrr") << side;
  }
}

TEST_F(Drawing, TakesNil) {
  CGContextDrawImage(context, {{0, 0}, {1, 1}}, nullptr);
  CGContextDrawImage(nullptr, {{0, 0}, {1, 1}}, fourColors);
  CGContextFillRect(nullptr, {{0, 0}, {1, 1}});
  CGContextClearRect(nullptr, {{0, 0}, {1, 1}});
  CGContextClipToRect(nullptr, {{0, 0}, {1, 1}});
  CGContextSaveGState(nullptr);
  CGContextRestoreGState(nullptr);
  CGContextTranslateCTM(nullptr, 1, 1);
  CGContextScaleCTM(nullptr, 1, 1);
  CGContextConcatCTM(nullptr, {});
  CGContextSetAlpha(nullptr, 1);
  CGContextSetRGBFillColor(nullptr, 1, 1, 1, 1);
  CGContextSetFillColorWithColor(nullptr, nullptr);
  CGContextSetBlendMode(nullptr, CGBlendMode{0});
  CGContextSetInterpolationQuality(nullptr, CGInterpolationQuality::none);
  CGContextSetShouldAntialias(nullptr, true);
  EXPECT_EQ(shown(), ".../.../...");
}

TEST_F(Drawing, SeesWhatOthersWriteIntoItsMemory) {
  for (const CGBitmapInfo info : {kRgba, kBgra}) {
    Bytes memory;
    const Context other(createContext(memory, 2, 1, info));
    CGContextFillRect(other, {{0, 0}, {2, 1}});
    std::fill(memory.begin(), memory.end(), std::uint8_t{0});
    CGContextSetRGBFillColor(other, 0, 0, 0, 128.0 / 255);
    CGContextFillRect(other, {{0, 0}, {1, 1}});
    EXPECT_EQ(memory, (Bytes{0, 0, 0, 128, 0, 0, 0, 0}));
  }
}

TEST_F(Drawing, DrawsOneImageOnManyThreads) {
  const Bytes pixels = premultipliedNoise(64 * 64);
  const Bitmap image(createImage(pixels, {.width = 64, .height = 64}));
  std::vector<Bytes> results(8);
  std::vector<std::thread> threads;
  for (Bytes& result : results) {
    threads.emplace_back([&] {
      for (int i = 0; i < 20; ++i) result = drawn(image);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const Bytes& result : results) EXPECT_EQ(result, pixels);
}

}  // namespace
