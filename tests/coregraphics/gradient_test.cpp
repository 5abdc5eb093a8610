// Linear gradients, images as masks, and filled paths.
#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "support/bitmaps.h"
#include "support/hosted.h"

namespace {

using test::Bytes;
using test::kHuge;
using Gradient = objc::Owned<CGGradientRef, &CGGradientRelease>;

constexpr CGFloat kNaN = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat kInfinity = std::numeric_limits<CGFloat>::infinity();
constexpr CGGradientDrawingOptions kBefore = kCGGradientDrawsBeforeStartLocation;
constexpr CGGradientDrawingOptions kAfter = kCGGradientDrawsAfterEndLocation;
constexpr std::int32_t kMultiply = 1;
constexpr std::int32_t kCopy = 17;

NSObject* color(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  return send<NSObject*>(UIColor::colorWithRed(red, green, blue, alpha), "CGColor"_sel);
}

CGGradientRef createGradient(std::vector<NSObject*> colors, const CGFloat* locations = nullptr) {
  const test::Space space(CGColorSpaceCreateDeviceRGB());
  return CGGradientCreateWithColors(space, NSArray::arrayWithObjects(colors.data(), colors.size()),
                                    locations);
}

/// A row of pixels with those alphas.
CGImageRef createMask(const std::vector<std::uint8_t>& alphas, std::size_t height = 1) {
  Bytes bytes;
  for (const std::uint8_t alpha : alphas) bytes.insert(bytes.end(), {0, 0, alpha, alpha});
  return test::createImage(bytes, {.width = alphas.size() / height, .height = height});
}

Bytes alphasOf(const Bytes& pixels) {
  Bytes alphas;
  for (std::size_t i = 3; i < pixels.size(); i += 4) alphas.push_back(pixels[i]);
  return alphas;
}

class Drawn : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  /// Ten pixels. The gradient runs from the left edge of the third to that of the eighth.
  static Bytes drawn(CGGradientRef gradient, CGGradientDrawingOptions options,
                     CGPoint from = {2, 0}, CGPoint to = {7, 0}) {
    Bytes bytes;
    const test::Context context(test::createContext(bytes, 10, 1));
    CGContextDrawLinearGradient(context, gradient, from, to, options);
    return bytes;
  }
};

using LinearGradient = Drawn;

TEST_F(LinearGradient, RunsFromColorToColor) {
  const Gradient gradient(createGradient({color(0, 0, 0, 1), color(1, 0.5, 0, 1)}));
  const Bytes bytes = drawn(gradient, 0, {0, 0}, {10, 0});
  for (std::size_t x = 0; x < 10; ++x) {
    const double share = (static_cast<double>(x) + 0.5) / 10;
    EXPECT_NEAR(bytes[x * 4], 255 * share, 2) << x;
    EXPECT_NEAR(bytes[x * 4 + 1], 127.5 * share, 2) << x;
    EXPECT_EQ(bytes[x * 4 + 2], 0);
    EXPECT_EQ(bytes[x * 4 + 3], 255);
  }
}

TEST_F(LinearGradient, GoesBeyondItsPointsWhereItShall) {
  const Gradient gradient(createGradient({color(1, 0, 0, 1), color(1, 0, 0, 1)}));
  EXPECT_EQ(alphasOf(drawn(gradient, 0)), (Bytes{0, 0, 255, 255, 255, 255, 255, 0, 0, 0}));
  EXPECT_EQ(alphasOf(drawn(gradient, kBefore)),
            (Bytes{255, 255, 255, 255, 255, 255, 255, 0, 0, 0}));
  EXPECT_EQ(alphasOf(drawn(gradient, kAfter)),
            (Bytes{0, 0, 255, 255, 255, 255, 255, 255, 255, 255}));
  EXPECT_EQ(alphasOf(drawn(gradient, kBefore | kAfter)), Bytes(10, 255));
}

TEST_F(LinearGradient, HasStopsAtItsLocations) {
  const std::vector<NSObject*> colors = {color(1, 0, 0, 1), color(0, 1, 0, 1), color(0, 0, 1, 1)};
  const CGFloat inside[] = {0.25, 0.5, 0.75};
  const Gradient gradient(createGradient(colors, inside));
  const Bytes bytes = drawn(gradient, 0, {0, 0}, {10, 0});
  // Red up to a quarter, blue from three quarters on.
  for (std::size_t x : {0U, 1U})
    EXPECT_EQ(Bytes(&bytes[x * 4], &bytes[x * 4 + 4]), (Bytes{255, 0, 0, 255}));
  for (std::size_t x : {8U, 9U})
    EXPECT_EQ(Bytes(&bytes[x * 4], &bytes[x * 4 + 4]), (Bytes{0, 0, 255, 255}));
  EXPECT_GT(bytes[4 * 4 + 1], 200);
  const Gradient even(createGradient(colors));
  const CGFloat thirds[] = {0, 0.5, 1};
  const Gradient same(createGradient(colors, thirds));
  EXPECT_EQ(drawn(even, 0), drawn(same, 0));
}

TEST_F(LinearGradient, TakesStrangeLocations) {
  const std::vector<NSObject*> colors = {color(1, 0, 0, 1), color(1, 0, 0, 1), color(1, 0, 0, 1)};
  for (const auto& locations : {std::array<CGFloat, 3>{kNaN, kInfinity, -kInfinity},
                                {1, 0.5, 0},
                                {-3, 7, kHuge},
                                {0.5, 0.5, 0.5}}) {
    const Gradient gradient(createGradient(colors, locations.data()));
    EXPECT_EQ(alphasOf(drawn(gradient, 0)), (Bytes{0, 0, 255, 255, 255, 255, 255, 0, 0, 0}));
  }
}

TEST_F(LinearGradient, TakesGreysAndIgnoresWhatIsNoColor) {
  auto* white = send<NSObject*>(UIColor::whiteColor(), "CGColor"_sel);
  const Gradient grey(createGradient({white}));
  EXPECT_EQ(drawn(grey, kBefore | kAfter), Bytes(40, 255));
  const Gradient strange(createGradient({test::string("red")}));
  EXPECT_EQ(drawn(strange, kBefore | kAfter), Bytes(40));
}

TEST_F(LinearGradient, IsNoneWithoutColors) {
  EXPECT_EQ(createGradient({}), nullptr);
  EXPECT_EQ(CGGradientCreateWithColors(nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(CGGradientCreateWithColors(nullptr, test::string("red"), nullptr), nullptr);
  EXPECT_EQ(drawn(nullptr, kBefore | kAfter), Bytes(40));
  CGGradientRelease(nullptr);
}

TEST_F(LinearGradient, TakesPointsNowhere) {
  const Gradient gradient(createGradient({color(1, 0, 0, 1), color(1, 0, 0, 1)}));
  for (const CGFloat strange : {kNaN, kInfinity, -kInfinity, kHuge}) {
    EXPECT_EQ(drawn(gradient, kBefore | kAfter, {strange, 0}, {7, 0}), Bytes(40));
    EXPECT_EQ(drawn(gradient, kBefore | kAfter, {2, 0}, {7, strange}), Bytes(40));
  }
  EXPECT_EQ(drawn(gradient, 0, {3, 0}, {3, 0}), Bytes(40)) << "of no length";
  CGContextDrawLinearGradient(nullptr, gradient, {0, 0}, {1, 1}, 0);
}

TEST_F(LinearGradient, HasTheContextsAlpha) {
  const Gradient gradient(createGradient({color(1, 0, 0, 0.5), color(1, 0, 0, 0.5)}));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 1, 1));
  CGContextSetAlpha(context, 0.5);
  CGContextDrawLinearGradient(context, gradient, {0, 0}, {1, 0}, kBefore | kAfter);
  EXPECT_NEAR(bytes[3], 64, 1);
}

// --- masks ---------------------------------------------------------------------------------------

TEST(Mask, CoversWhatIsDrawnByItsAlphaAlone) {
  const test::Bitmap mask(createMask({0, 1, 64, 128, 254, 255}));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 6, 1));
  CGContextClipToMask(context, {{0, 0}, {6, 1}}, mask);
  CGContextFillRect(context, {{0, 0}, {6, 1}});
  EXPECT_EQ(alphasOf(bytes), (Bytes{0, 1, 64, 128, 254, 255}));
  for (std::size_t i = 0; i < bytes.size(); i += 4) EXPECT_EQ(bytes[i + 2], 0) << "no blue";
}

TEST(Mask, OfGreysWithoutAlphaCoversByThem) {
  const test::Layout greys = {
      .width = 4, .bitsPerPixel = 8, .info = kCGImageAlphaNone, .isGrey = true};
  test::Layout inverted = greys;
  inverted.decode = {1, 0};
  const Bytes values = {0, 64, 128, 255};
  for (const auto& [layout, expected] :
       {std::pair{greys, values}, std::pair{inverted, Bytes{255, 191, 127, 0}}}) {
    const test::Bitmap mask(test::createImage(values, layout));
    Bytes bytes;
    const test::Context context(test::createContext(bytes, 4, 1));
    CGContextClipToMask(context, {{0, 0}, {4, 1}}, mask);
    CGContextFillRect(context, {{0, 0}, {4, 1}});
    EXPECT_EQ(alphasOf(bytes), expected);
  }
  // At half size, the means cover.
  const test::Bitmap mask(test::createImage(values, greys));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 2, 1));
  CGContextClipToMask(context, {{0, 0}, {2, 1}}, mask);
  CGContextFillRect(context, {{0, 0}, {2, 1}});
  EXPECT_EQ(alphasOf(bytes), (Bytes{32, 192}));
}

TEST(Mask, OfOpaqueColoursCoversAll) {
  const test::Bitmap mask(
      test::createImage(Bytes(8, 40), {.width = 2, .info = kCGImageAlphaNoneSkipLast}));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 2, 1));
  CGContextClipToMask(context, {{0, 0}, {2, 1}}, mask);
  CGContextFillRect(context, {{0, 0}, {2, 1}});
  EXPECT_EQ(alphasOf(bytes), (Bytes{255, 255}));
}

TEST(Mask, CoversImagesAndPaths) {
  const test::Bitmap mask(createMask({0, 128, 255}));
  const test::Bitmap image(test::createImage(Bytes(3 * 4, 255), {.width = 3}));
  for (const bool isPath : {false, true}) {
    Bytes bytes;
    const test::Context context(test::createContext(bytes, 3, 1));
    CGContextClipToMask(context, {{0, 0}, {3, 1}}, mask);
    if (isPath) {
      CGContextAddRect(context, {{0, 0}, {3, 1}});
      CGContextFillPath(context);
    } else {
      CGContextDrawImage(context, {{0, 0}, {3, 1}}, image);
    }
    EXPECT_EQ(alphasOf(bytes), (Bytes{0, 128, 255})) << isPath;
  }
}

TEST(Mask, LetsNothingThroughOutsideItsRectangle) {
  const test::Bitmap mask(createMask({255}));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 4, 1));
  CGContextClipToMask(context, {{1, 0}, {2, 1}}, mask);
  CGContextFillRect(context, {{0, 0}, {4, 1}});
  EXPECT_EQ(alphasOf(bytes), (Bytes{0, 255, 255, 0})) << "stretched to its very edge";
}

TEST(Mask, StandsUprightInTheSpaceOfItsTime) {
  const test::Bitmap mask(createMask({255, 0}, 2));  // covered above
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 1, 2));
  CGContextSaveGState(context);
  CGContextClipToMask(context, {{0, 0}, {1, 2}}, mask);
  CGContextTranslateCTM(context, 0, 2);  // which does not move the mask
  CGContextScaleCTM(context, 1, -1);
  CGContextFillRect(context, {{0, 0}, {1, 2}});
  EXPECT_EQ(alphasOf(bytes), (Bytes{255, 0}));
  CGContextRestoreGState(context);
  CGContextTranslateCTM(context, 0, 2);
  CGContextScaleCTM(context, 1, -1);
  CGContextClearRect(context, {{0, 0}, {1, 2}});
  CGContextClipToMask(context, {{0, 0}, {1, 2}}, mask);
  CGContextFillRect(context, {{0, 0}, {1, 2}});
  EXPECT_EQ(alphasOf(bytes), (Bytes{0, 255})) << "flipped";
}

TEST(Mask, SeveralCoverTogetherUntilTheStateIsRestored) {
  const test::Bitmap half(createMask({128, 128, 255}));
  const test::Bitmap left(createMask({255, 128, 0}));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 3, 1));
  const CGRect whole{{0, 0}, {3, 1}};
  CGContextSaveGState(context);
  CGContextClipToMask(context, whole, half);
  CGContextSaveGState(context);
  CGContextClipToMask(context, whole, left);
  CGContextFillRect(context, whole);
  EXPECT_EQ(alphasOf(bytes), (Bytes{128, 64, 0}));
  CGContextRestoreGState(context);
  bytes.assign(12, 0);
  CGContextFillRect(context, whole);
  EXPECT_EQ(alphasOf(bytes), (Bytes{128, 128, 255}));
  CGContextRestoreGState(context);
  CGContextFillRect(context, whole);
  EXPECT_EQ(alphasOf(bytes), Bytes(3, 255));
}

TEST(Mask, CoversEachBlendMode) {
  // At half coverage, each mode has half its effect. Green must not be covered twice, nor blue left
  // uncovered.
  const test::Bitmap mask(createMask({128}));
  const Bytes under{200, 100, 50, 255};
  for (const std::int32_t mode : {0, 1, 2, 12, 13, 14, 15, 16, 17, 18, 22, 25}) {
    Bytes plain = under, masked = under;
    for (Bytes* bytes : {&plain, &masked}) {
      const test::Context context(test::createContext(*bytes, 1, 1));
      if (bytes == &masked) CGContextClipToMask(context, {{0, 0}, {1, 1}}, mask);
      CGContextSetBlendMode(context, CGBlendMode{mode});
      CGContextSetRGBFillColor(context, 0.2, 0.9, 0.7, 0.8);
      CGContextFillRect(context, {{0, 0}, {1, 1}});
    }
    for (std::size_t c = 0; c < 4; ++c)
      EXPECT_NEAR(masked[c], (plain[c] * 128 + under[c] * 127) / 255.0, 1.5) << mode << ' ' << c;
  }
}

TEST(Mask, GoesWithTheContextsAlpha) {
  const test::Bitmap mask(createMask({128}));
  const test::Bitmap image(test::createImage(Bytes(4, 255), {}));
  for (const std::int32_t mode : {0, kMultiply}) {
    Bytes bytes;
    const test::Context context(test::createContext(bytes, 1, 1));
    CGContextSetBlendMode(context, CGBlendMode{mode});
    CGContextClipToMask(context, {{0, 0}, {1, 1}}, mask);
    CGContextSetAlpha(context, 0.5);
    CGContextDrawImage(context, {{0, 0}, {1, 1}}, image);
    EXPECT_NEAR(bytes[3], 64, 1) << mode;
  }
}

TEST(Mask, CoversNothingWhereItHasNoPlace) {
  const test::Bitmap mask(createMask({255}));
  for (const CGRect& rect :
       {CGRect{{0, 0}, {0, 1}}, CGRect{{0, 0}, {1, 0}}, CGRect{{kNaN, 0}, {1, 1}},
        CGRect{{0, 0}, {kInfinity, 1}}, CGRect{{0, kInfinity}, {1, 1}}, CGRect{{5, 5}, {1, 1}}}) {
    Bytes bytes;
    const test::Context context(test::createContext(bytes, 1, 1));
    CGContextSaveGState(context);
    CGContextClipToMask(context, rect, mask);
    CGContextFillRect(context, {{0, 0}, {1, 1}});
    EXPECT_EQ(bytes, Bytes(4)) << rect.origin.x << ' ' << rect.size.width;
    CGContextRestoreGState(context);
    CGContextFillRect(context, {{0, 0}, {1, 1}});
    EXPECT_EQ(bytes[3], 255) << "and does no lasting harm";
  }
}

TEST(Mask, OfNilIsNone) {
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 1, 1));
  CGContextClipToMask(context, {{0, 0}, {1, 1}}, nullptr);
  CGContextFillRect(context, {{0, 0}, {1, 1}});
  EXPECT_EQ(bytes[3], 255);
  const test::Bitmap mask(createMask({255}));
  CGContextClipToMask(nullptr, {{0, 0}, {1, 1}}, mask);
}

TEST(Mask, IsKeptAndMayBeUsedByManyThreads) {
  CGImageRef mask = createMask({0, 128, 255});
  std::vector<std::thread> threads;
  std::atomic<int> wrong = 0;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&, own = CGImageRetain(mask)] {
      for (int n = 0; n < 50; ++n) {
        Bytes bytes;
        const test::Context context(test::createContext(bytes, 3, 1));
        CGContextClipToMask(context, {{0, 0}, {3, 1}}, own);
        CGContextFillRect(context, {{0, 0}, {3, 1}});
        if (alphasOf(bytes) != Bytes{0, 128, 255}) ++wrong;
      }
      CGImageRelease(own);
    });
  }
  CGImageRelease(mask);
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

// --- paths ---------------------------------------------------------------------------------------

TEST(Path, IsFilledAndGone) {
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 3, 1));
  CGContextAddRect(context, {{0, 0}, {1, 1}});
  CGContextAddRect(context, {{2, 0}, {1, 1}});
  CGContextSetRGBFillColor(context, 1, 0, 0, 1);
  CGContextFillPath(context);
  EXPECT_EQ(bytes, (Bytes{255, 0, 0, 255, 0, 0, 0, 0, 255, 0, 0, 255}));
  CGContextSetRGBFillColor(context, 0, 1, 0, 1);
  CGContextFillPath(context);
  EXPECT_EQ(bytes, (Bytes{255, 0, 0, 255, 0, 0, 0, 0, 255, 0, 0, 255})) << "nothing is left";
}

TEST(Path, OfAnEllipseHasSoftEdges) {
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 20, 20));
  CGContextAddEllipseInRect(context, {{0, 0}, {20, 20}});
  CGContextFillPath(context);
  double covered = 0;
  for (const std::uint8_t alpha : alphasOf(bytes)) covered += alpha / 255.0;
  EXPECT_NEAR(covered, 314.159, 2);
  EXPECT_EQ(bytes[3], 0);
}

TEST(Path, ReachesNoFurtherInAnyMode) {
  Bytes bytes(2 * 4, 255);
  const test::Context context(test::createContext(bytes, 2, 1));
  CGContextSetBlendMode(context, CGBlendMode{kCopy});
  CGContextSetRGBFillColor(context, 0, 0, 0, 0);
  CGContextAddRect(context, {{0, 0}, {1, 1}});
  CGContextFillPath(context);
  EXPECT_EQ(bytes, (Bytes{0, 0, 0, 0, 255, 255, 255, 255}));
}

TEST(Path, TakesStrangeRectangles) {
  const std::pair<CGRect, int> kRects[] = {{{{kNaN, 0}, {1, 1}}, 0},
                                           {{{0, 0}, {kInfinity, kInfinity}}, 255},
                                           {{{-kHuge, 0}, {kHuge, 1}}, 0},
                                           {{{kHuge, 0}, {-2 * kHuge, 1}}, 255},
                                           {{{0, 0}, {0, 0}}, 0}};
  for (const auto& [rect, covered] : kRects) {
    Bytes bytes;
    const test::Context context(test::createContext(bytes, 1, 1));
    CGContextAddRect(context, rect);
    CGContextAddEllipseInRect(context, rect);
    CGContextFillPath(context);
    EXPECT_EQ(bytes[3], covered) << rect.origin.x << ' ' << rect.size.width;
    bytes.assign(4, 0);
    CGContextAddRect(context, {{0, 0}, {1, 1}});
    CGContextFillPath(context);
    EXPECT_EQ(bytes[3], 255) << rect.origin.x << ' ' << rect.size.width;
  }
  CGContextAddRect(nullptr, {{0, 0}, {1, 1}});
  CGContextAddEllipseInRect(nullptr, {{0, 0}, {1, 1}});
  CGContextFillPath(nullptr);
}

}  // namespace
