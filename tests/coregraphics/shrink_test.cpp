// Shrinking averages: an image drawn into fewer pixels is its mean there, whatever its size.
#include <cmath>
#include <random>

#include "CoreGraphics/CoreGraphics.h"
#include "objc/autorelease_pool.h"
#include "support/hosted.h"
#include "support/pictures.h"

namespace {

using test::Pixel;
using Pixels = std::vector<Pixel>;

class Shrink : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  /// Noise with alpha, premultiplied.
  static Pixels noise(std::size_t width, std::size_t height) {
    std::mt19937 random(static_cast<unsigned>(width * 7919 + height));
    Pixels pixels(width * height);
    for (Pixel& pixel : pixels) {
      pixel[3] = static_cast<std::uint8_t>(random() % 4 == 0 ? random() % 256 : 255);
      for (int c = 0; c < 3; ++c) pixel[c] = static_cast<std::uint8_t>(random() % (pixel[3] + 1U));
    }
    return pixels;
  }
  static UIImage* imageOf(const Pixels& pixels, std::size_t width, std::size_t height) {
    return test::picture(width, height,
                         [&](std::size_t x, std::size_t y) { return pixels[y * width + x]; });
  }
  static Pixels drawn(UIImage* image, std::size_t width, std::size_t height) {
    Pixels pixels(width * height);
    const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
    const objc::Owned<CGContextRef, &CGContextRelease> context(
        CGBitmapContextCreate(pixels.data(), width, height, 8, width * 4, space,
                              kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big));
    CGContextDrawImage(context,
                       {{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}},
                       send<CGImageRef>(image, "CGImage"_sel));
    return pixels;
  }
  /// How much of a pixel is between two bounds.
  static double part(std::size_t pixel, double from, double to) {
    const auto at = static_cast<double>(pixel);
    return std::max(0.0, std::min(at + 1, to) - std::max(at, from));
  }
  /// The mean of an area whose edges cut through pixels, computed directly.
  static std::array<double, 4> mean(const Pixels& pixels, std::size_t width, double x0, double x1,
                                    double y0, double y1) {
    std::array<double, 4> sum{};
    for (auto y = static_cast<std::size_t>(y0); static_cast<double>(y) < y1; ++y) {
      for (auto x = static_cast<std::size_t>(x0); static_cast<double>(x) < x1; ++x) {
        const double weight = part(x, x0, x1) * part(y, y0, y1);
        if (weight == 0) continue;
        for (int c = 0; c < 4; ++c) sum[c] += weight * pixels[y * width + x][c];
      }
    }
    for (double& value : sum) value /= (x1 - x0) * (y1 - y0);
    return sum;
  }
  /// The largest difference between the drawing and the directly computed means.
  static double worst(std::size_t width, std::size_t height, std::size_t toWidth,
                      std::size_t toHeight) {
    objc::AutoreleasePool pool;
    const Pixels from = noise(width, height);
    const Pixels to = drawn(imageOf(from, width, height), toWidth, toHeight);
    const double across = static_cast<double>(width) / static_cast<double>(toWidth);
    const double down = static_cast<double>(height) / static_cast<double>(toHeight);
    double largest = 0;
    for (std::size_t y = 0; y < toHeight; ++y) {
      for (std::size_t x = 0; x < toWidth; ++x) {
        const auto cx = static_cast<double>(x);
        const auto cy = static_cast<double>(y);
        const auto expected = mean(from, width, cx * across, (cx + 1) * across, cy * down,
                                   std::min((cy + 1) * down, static_cast<double>(height)));
        for (int c = 0; c < 4; ++c)
          largest = std::max(largest, std::abs(expected[c] - to[y * toWidth + x][c]));
      }
    }
    return largest;
  }
};

TEST_F(Shrink, OnePixelIsTheMean) {
  const std::pair<std::size_t, std::size_t> kSizes[] = {
      {1, 1},   {2, 3},    {7, 5},     {16, 16},   {31, 33},   {33, 64},   {64, 64},  {97, 89},
      {120, 1}, {1, 1000}, {255, 257}, {256, 300}, {512, 512}, {640, 480}, {1024, 7}, {1500, 1001},
  };
  for (const auto& [width, height] : kSizes)
    EXPECT_LE(worst(width, height, 1, 1), 0.51) << width << " x " << height;
}

TEST_F(Shrink, EachOf32By32PixelsIsTheMeanOfItsArea) {
  const std::pair<std::size_t, std::size_t> kSizes[] = {
      {33, 33},  {40, 50},  {64, 64},   {59, 59},   {118, 118}, {120, 120},
      {320, 32}, {32, 320}, {500, 333}, {512, 512}, {1000, 37},
  };
  for (const auto& [width, height] : kSizes)
    EXPECT_LE(worst(width, height, 32, 32), 0.51) << width << " x " << height;
}

TEST_F(Shrink, OfItsOwnSizeItIsTheSameByteForByte) {
  const Pixels from = noise(32, 32);
  EXPECT_EQ(drawn(imageOf(from, 32, 32), 32, 32), from);
}

TEST_F(Shrink, KeepsOneColorAsItIs) {
  for (std::size_t side : {33, 100, 257, 1024}) {
    UIImage* image = test::picture(side, side, [](auto, auto) { return Pixel{12, 34, 56, 200}; });
    for (const Pixel& pixel : drawn(image, 32, 32)) ASSERT_EQ(pixel, (Pixel{12, 34, 56, 200}));
  }
}

TEST_F(Shrink, AVeryLargeImageIsItsMean) {
  // More rows than a sum of 16 bits can hold.
  UIImage* image = test::picture(3, 4000, [](std::size_t, std::size_t y) {
    return y % 2 == 0 ? Pixel{255, 0, 0, 255} : Pixel{0, 0, 255, 255};
  });
  EXPECT_EQ(drawn(image, 1, 1), (Pixels{{128, 0, 128, 255}}));
}

TEST_F(Shrink, EnlargesWithoutBorders) {
  UIImage* image = test::picture(2, 2, [](auto, auto) { return Pixel{9, 8, 7, 255}; });
  for (const Pixel& pixel : drawn(image, 32, 32)) ASSERT_EQ(pixel, (Pixel{9, 8, 7, 255}));
}

}  // namespace
