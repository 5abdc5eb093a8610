// Drawing: where it goes, and with which state.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/bitmaps.h"

namespace {

using namespace test;

/// A bitmap read as letters: one for each pure colour.
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

}  // namespace
