// Transforms, blend modes, clips, and how smoothly images are enlarged.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/bitmaps.h"

namespace {

using test::Bytes;

constexpr double kQuarter = 1.5707963267948966;

/// With the platform's numbers.
enum Mode : std::int32_t {
  normal = 0,
  multiply = 1,
  screen = 2,
  hue = 12,
  clear = 16,
  copy = 17,
  sourceIn = 18,
  sourceAtop = 20,
  destinationOver = 21,
  destinationIn = 22,
  destinationOut = 23,
  exclusiveOr = 25,
  plusLighter = 27,
};

/// The result of drawing one pixel over another.
Bytes blended(std::int32_t mode, const Bytes& under, const Bytes& over) {
  Bytes bytes = under;
  const test::Context context(test::createContext(bytes, 1, 1));
  const test::Bitmap image(test::createImage(over, {}));
  CGContextSetBlendMode(context, CGBlendMode{mode});
  CGContextDrawImage(context, {{0, 0}, {1, 1}}, image);
  return bytes;
}

TEST(BlendMode, MixesPremultipliedColors) {
  const Bytes over{102, 0, 0, 102};     // red, two fifths opaque
  const Bytes under{0, 255, 0, 255};    // green
  const Bytes halfUnder{0, 51, 0, 51};  // green, one fifth opaque
  EXPECT_EQ(blended(normal, under, over), (Bytes{102, 153, 0, 255}));
  EXPECT_EQ(blended(multiply, under, over), (Bytes{0, 153, 0, 255}));
  EXPECT_EQ(blended(screen, under, over), (Bytes{102, 255, 0, 255}));
  EXPECT_EQ(blended(clear, under, over), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(blended(copy, under, over), over);
  EXPECT_EQ(blended(sourceIn, halfUnder, over), (Bytes{20, 0, 0, 20}));
  EXPECT_EQ(blended(sourceAtop, under, over), (Bytes{102, 153, 0, 255}));
  EXPECT_EQ(blended(destinationOver, halfUnder, over), (Bytes{82, 51, 0, 133}));
  EXPECT_EQ(blended(destinationIn, under, over), (Bytes{0, 102, 0, 102}));
  EXPECT_EQ(blended(destinationOut, under, over), (Bytes{0, 153, 0, 153}));
  EXPECT_EQ(blended(exclusiveOr, under, over), (Bytes{0, 153, 0, 153}));
  EXPECT_EQ(blended(plusLighter, halfUnder, over), (Bytes{102, 51, 0, 153}));
}

TEST(BlendMode, HueTakesOnlyTheHue) {
  // A grey has no saturation to keep.
  EXPECT_EQ(blended(hue, {90, 90, 90, 255}, {0, 0, 255, 255}), (Bytes{90, 90, 90, 255}));
  const Bytes result = blended(hue, {200, 100, 100, 255}, {0, 0, 255, 255});
  EXPECT_GT(result[2], result[0]);
  EXPECT_EQ(result[0], result[1]);
}

TEST(BlendMode, AnUnknownOneChangesNothing) {
  for (const std::int32_t unknown : {-1, 28, INT32_MAX, INT32_MIN}) {
    Bytes bytes{0, 255, 0, 255};
    const test::Context context(test::createContext(bytes, 1, 1));
    CGContextSetBlendMode(context, CGBlendMode{clear});
    CGContextSetBlendMode(context, CGBlendMode{unknown});
    CGContextFillRect(context, {{0, 0}, {1, 1}});
    EXPECT_EQ(bytes, Bytes(4)) << unknown;
  }
  CGContextSetBlendMode(nullptr, CGBlendMode{clear});
}

TEST(BlendMode, ReachesNoFurtherThanWhatIsDrawn) {
  const Bytes under(2 * 4, 255);
  for (const std::int32_t mode : {clear, copy, sourceIn, destinationIn}) {
    Bytes bytes = under;
    const test::Context context(test::createContext(bytes, 2, 1));
    CGContextSetBlendMode(context, CGBlendMode{mode});
    CGContextSetRGBFillColor(context, 0, 0, 0, 0);
    CGContextFillRect(context, {{0, 0}, {1, 1}});
    EXPECT_EQ(bytes, (Bytes{0, 0, 0, 0, 255, 255, 255, 255})) << mode;
    const test::Bitmap image(test::createImage(Bytes(4), {}));
    bytes = under;
    CGContextDrawImage(context, {{0, 0}, {1, 1}}, image);
    EXPECT_EQ(bytes, (Bytes{0, 0, 0, 0, 255, 255, 255, 255})) << mode;
  }
}

TEST(BlendMode, IsSavedAndRestored) {
  Bytes bytes{0, 255, 0, 255};
  const test::Context context(test::createContext(bytes, 1, 1));
  CGContextSaveGState(context);
  CGContextSetBlendMode(context, CGBlendMode{clear});
  CGContextRestoreGState(context);
  CGContextFillRect(context, {{0, 0}, {1, 1}});
  EXPECT_EQ(bytes, (Bytes{0, 0, 0, 255}));
}

// --- transforms ----------------------------------------------------------------------------------

/// For numbers up to 16.
constexpr double kRounding = 16 * std::numeric_limits<CGFloat>::epsilon();

void expectTransform(CGContextRef context, const std::array<CGFloat, 6>& expected) {
  const CGAffineTransform t = CGContextGetCTM(context);
  const std::array<CGFloat, 6> parts = {t.a, t.b, t.c, t.d, t.tx, t.ty};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(parts[i], expected[i], kRounding) << i;
}

TEST(Transform, IsMadeOfItsPartsTheLastOneFirst) {
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 4, 8));
  expectTransform(context, {1, 0, 0, 1, 0, 0});
  CGContextTranslateCTM(context, 3, 5);
  expectTransform(context, {1, 0, 0, 1, 3, 5});
  CGContextScaleCTM(context, 2, -4);
  expectTransform(context, {2, 0, 0, -4, 3, 5});
  CGContextTranslateCTM(context, 1, 1);
  expectTransform(context, {2, 0, 0, -4, 5, 1});
  CGContextSaveGState(context);
  CGContextRotateCTM(context, kQuarter);
  expectTransform(context, {0, -4, -2, 0, 5, 1});
  CGContextRestoreGState(context);
  CGContextConcatCTM(context, {1, 2, 3, 4, 5, 6});
  expectTransform(context, {2, -8, 6, -16, 15, -23});
  expectTransform(nullptr, {1, 0, 0, 1, 0, 0});
}

TEST(Transform, TurnsAndMirrorsPixelsExactly) {
  const Bytes noise = test::premultipliedNoise(3 * 2);
  const test::Bitmap image(test::createImage(noise, {.width = 3, .height = 2}));
  auto pixel = [](const Bytes& bytes, std::size_t index) {
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(index) * 4,
                 bytes.begin() + static_cast<std::ptrdiff_t>(index) * 4 + 4);
  };
  // A quarter turn counter-clockwise: the right column becomes the top row.
  Bytes turned;
  const test::Context tall(test::createContext(turned, 2, 3));
  CGContextTranslateCTM(tall, 2, 0);
  CGContextRotateCTM(tall, kQuarter);
  CGContextDrawImage(tall, {{0, 0}, {3, 2}}, image);
  const std::size_t kTurned[] = {2, 5, 1, 4, 0, 3};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(pixel(turned, i), pixel(noise, kTurned[i])) << i;

  Bytes mirrored;
  const test::Context wide(test::createContext(mirrored, 3, 2));
  CGContextTranslateCTM(wide, 3, 0);
  CGContextScaleCTM(wide, -1, 1);
  CGContextDrawImage(wide, {{0, 0}, {3, 2}}, image);
  const std::size_t kMirrored[] = {2, 1, 0, 5, 4, 3};
  for (std::size_t i = 0; i < 6; ++i)
    EXPECT_EQ(pixel(mirrored, i), pixel(noise, kMirrored[i])) << i;
}

TEST(Transform, ShrinksUprightWhereTheContextIsFlipped) {
  // White above black, four pixels drawn into two.
  Bytes column(4 * 4, 255);
  for (std::size_t i : {8U, 9U, 10U, 12U, 13U, 14U}) column[i] = 0;
  const test::Bitmap image(test::createImage(column, {.width = 1, .height = 4}));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 1, 2));
  CGContextTranslateCTM(context, 0, 2);
  CGContextScaleCTM(context, 1, -1);
  CGContextDrawImage(context, {{0, 0}, {1, 2}}, image);
  EXPECT_EQ(bytes, (Bytes{0, 0, 0, 255, 255, 255, 255, 255})) << "upside down, as flipped";
}

// --- clips and edges -----------------------------------------------------------------------------

TEST(Clip, KeepsDrawingInside) {
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 3, 1));
  CGContextSaveGState(context);
  CGContextClipToRect(context, {{2, 1}, {-1, -1}});  // sides may be negative
  CGContextFillRect(context, {{0, 0}, {3, 1}});
  EXPECT_EQ(bytes, (Bytes{0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0}));
  CGContextClipToRect(context, {{0, 0}, {1, 1}});  // this leaves nothing
  CGContextClearRect(context, {{0, 0}, {3, 1}});
  EXPECT_EQ(bytes[7], 255);
  CGContextRestoreGState(context);
  CGContextClearRect(context, {{0, 0}, {3, 1}});
  EXPECT_EQ(bytes, Bytes(12));
}

TEST(Edge, IsSoftUnlessItShallNot) {
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 1, 1));
  CGContextFillRect(context, {{0, 0}, {0.25, 1}});
  EXPECT_NEAR(bytes[3], 64, 1);
  bytes.assign(4, 0);
  CGContextSetShouldAntialias(context, false);
  CGContextFillRect(context, {{0, 0}, {0.25, 1}});
  EXPECT_EQ(bytes[3], 0);
  CGContextFillRect(context, {{0, 0}, {0.75, 1}});
  EXPECT_EQ(bytes[3], 255);
  CGContextSetShouldAntialias(nullptr, false);
}

// --- alpha and enlarging -------------------------------------------------------------------------

TEST(Alpha, CoversImagesAndFillsInPart) {
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 1, 1));
  CGContextSetAlpha(context, 0.4);
  const test::Bitmap image(test::createImage({255, 0, 0, 255}, {}));
  CGContextDrawImage(context, {{0, 0}, {1, 1}}, image);
  EXPECT_EQ(bytes, (Bytes{102, 0, 0, 102}));
  bytes.assign(4, 0);
  CGContextSetRGBFillColor(context, 0, 1, 0, 0.5);
  CGContextFillRect(context, {{0, 0}, {1, 1}});
  EXPECT_EQ(bytes, (Bytes{0, 51, 0, 51}));
}

/// The red values of an enlarged row of black and white.
Bytes enlarged(CGInterpolationQuality quality) {
  const test::Bitmap image(
      test::createImage({0, 0, 0, 255, 255, 255, 255, 255}, {.width = 2, .height = 1}));
  Bytes bytes;
  const test::Context context(test::createContext(bytes, 8, 1));
  CGContextSetInterpolationQuality(context, quality);
  CGContextDrawImage(context, {{0, 0}, {8, 1}}, image);
  Bytes reds;
  for (std::size_t i = 0; i < bytes.size(); i += 4) reds.push_back(bytes[i]);
  return reds;
}

TEST(Interpolation, IsSmoothUnlessItShallNot) {
  const Bytes smooth = enlarged(CGInterpolationQuality::standard);
  EXPECT_EQ(smooth.front(), 0);
  EXPECT_EQ(smooth.back(), 255);
  // Linear between the centres of the two pixels.
  EXPECT_NEAR(smooth[2], 255 / 8, 2);
  EXPECT_NEAR(smooth[3], 255 * 3 / 8, 2);
  EXPECT_NEAR(smooth[4], 255 * 5 / 8, 2);
  EXPECT_EQ(enlarged(CGInterpolationQuality::high), smooth);
  EXPECT_EQ(enlarged(CGInterpolationQuality::none), (Bytes{0, 0, 0, 0, 255, 255, 255, 255}));
  CGContextSetInterpolationQuality(nullptr, CGInterpolationQuality::none);
}

}  // namespace
