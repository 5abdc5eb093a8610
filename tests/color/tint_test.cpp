// Images in another hue, compared with the W3C's formulas for compositing and blending, computed
// here in double precision. Components run from 0 to 1, in pictures from 0 to 255.
#include <algorithm>
#include <cmath>

#include "picker/analysis.h"
#include "support/bitmaps.h"

namespace {

using namespace test;

using Rgb = std::array<double, 3>;

double lum(const Rgb& c) { return 0.3 * c[0] + 0.59 * c[1] + 0.11 * c[2]; }
double sat(const Rgb& c) { return std::max({c[0], c[1], c[2]}) - std::min({c[0], c[1], c[2]}); }

Rgb clipColor(Rgb c) {
  const double l = lum(c);
  const double n = std::min({c[0], c[1], c[2]});
  const double x = std::max({c[0], c[1], c[2]});
  for (double& part : c) {
    if (n < 0) part = l + (part - l) * l / (l - n);
  }
  for (double& part : c) {
    if (x > 1) part = l + (part - l) * (1 - l) / (x - l);
  }
  return c;
}

Rgb setLum(Rgb c, double l) {
  const double d = l - lum(c);
  for (double& part : c) part += d;
  return clipColor(c);
}

/// The smallest part becomes 0, the largest the saturation; the middle one stays in proportion.
Rgb setSat(Rgb c, double s) {
  const double smallest = std::min({c[0], c[1], c[2]});
  const double range = sat(c);
  for (double& part : c) part = range > 0 ? (part - smallest) * s / range : 0;
  return c;
}

Rgb hueOf(const Rgb& backdrop, const Rgb& source) {
  return setLum(setSat(source, sat(backdrop)), lum(backdrop));
}

/// With premultiplied colour.
struct Layer {
  Rgb color{};
  double alpha = 0;

  Rgb plain() const {
    if (alpha <= 0) return {};
    return {color[0] / alpha, color[1] / alpha, color[2] / alpha};
  }
  Layer covered(double by) const {
    return {{color[0] * by, color[1] * by, color[2] * by}, alpha * by};
  }
};

Layer layer(const Rgb& color, double alpha) { return Layer{color, 1}.covered(alpha); }

template <class Blend>
Layer composite(const Layer& backdrop, const Layer& source, Blend blend) {
  const Rgb mixed = blend(backdrop.plain(), source.plain());
  Layer result;
  for (std::size_t c = 0; c < 3; ++c) {
    result.color[c] = source.color[c] * (1 - backdrop.alpha) +
                      backdrop.color[c] * (1 - source.alpha) +
                      source.alpha * backdrop.alpha * mixed[c];
  }
  result.alpha = source.alpha + backdrop.alpha - source.alpha * backdrop.alpha;
  return result;
}

Layer over(const Layer& backdrop, const Layer& source) {
  return composite(backdrop, source, [](const Rgb&, const Rgb& top) { return top; });
}
Layer hueOver(const Layer& backdrop, const Layer& source) {
  return composite(backdrop, source, hueOf);
}

/// The layers from below: the pixel, black with the pixel's coverage, the pixel again, the hue.
Layer expectedTint(const Layer& pixel, const Rgb& pureHue, double alpha) {
  Layer result = pixel;
  result = over(result, layer({}, 1).covered(pixel.alpha));
  result = over(result, pixel.covered(pixel.alpha));
  return hueOver(result, layer(pureHue, alpha).covered(pixel.alpha));
}

/// The hue at saturation and brightness 1.
Rgb pureHue(double hue) {
  const double h = hue * 6;
  auto ramp = [](double x) { return std::clamp(x, 0.0, 1.0); };
  return {ramp(std::abs(h - 3) - 1), ramp(2 - std::abs(h - 2)), ramp(2 - std::abs(h - 4))};
}

UIImage* tint(UIImage* image, UIColor* color) {
  static auto* function = plainFunction<UIImage*(UIImage*, UIColor*)>("plainTintImage");
  return function(image, color);
}
UIColor* hsb(double hue, double saturation, double brightness, double alpha) {
  return UIColor::colorWithHue(static_cast<CGFloat>(hue), static_cast<CGFloat>(saturation),
                               static_cast<CGFloat>(brightness), static_cast<CGFloat>(alpha));
}
Bytes pixelsOf(UIImage* image) { return drawn(send<CGImageRef>(image, "CGImage"_sel)); }

Layer layerAt(const Bytes& bytes, std::size_t pixel) {
  const std::uint8_t* p = &bytes[pixel * 4];
  return {{p[0] / 255.0, p[1] / 255.0, p[2] / 255.0}, p[3] / 255.0};
}

/// The largest difference, on a scale of 255.
double difference(const Layer& a, const Layer& b) {
  double worst = std::abs(a.alpha - b.alpha);
  for (std::size_t c = 0; c < 3; ++c) worst = std::max(worst, std::abs(a.color[c] - b.color[c]));
  return worst * 255;
}

/// 216 colours in a row; each row has another alpha.
constexpr std::size_t kColors = 216;
constexpr std::uint8_t kAlphas[] = {0, 1, 5, 26, 64, 128, 191, 230, 254, 255};
constexpr std::size_t kRows = std::size(kAlphas);

Pixel gridPixel(std::size_t x, std::size_t y) {
  const std::uint8_t alpha = kAlphas[y];
  auto part = [&](std::size_t step) {
    return static_cast<std::uint8_t>(std::lround(static_cast<double>(step * alpha) / 5));
  };
  return {part(x / 36), part(x / 6 % 6), part(x % 6), alpha};
}
UIImage* grid() { return picture(kColors, kRows, gridPixel); }

constexpr double kMostOff = 2;
/// At soft edges, three layers of eight bits a component are below the hue, which enlarges their
/// rounding errors up to three times.
constexpr double kMostOffAtEdges = 3.25;

class Tint : public PlainAnalysis {};

TEST_F(Tint, IsTheFormulasOverAGridOfColorsAndAlphas) {
  UIImage* image = grid();
  const Bytes before = pixelsOf(image);
  const Bytes beneath = pixelsOf(tint(image, nullptr));  // all layers except the hue
  std::array<double, kRows> worst{};
  double worstHue = 0;
  for (int step = 0; step < 24; ++step) {
    for (const double alpha : {1.0, 0.8, 0.5, 0.2, 0.0}) {
      const double hue = step / 24.0;
      // However dull the colour is, only its hue matters.
      const Bytes after = pixelsOf(tint(image, hsb(hue, 0.4, 0.6, alpha)));
      ASSERT_EQ(after.size(), before.size());
      for (std::size_t i = 0; i < kColors * kRows; ++i) {
        const Layer pixel = layerAt(before, i);
        const Layer is = layerAt(after, i);
        double& row = worst[i / kColors];
        row = std::max(row, difference(is, expectedTint(pixel, pureHue(hue), alpha)));
        const Layer top = layer(pureHue(hue), alpha).covered(pixel.alpha);
        worstHue = std::max(worstHue, difference(is, hueOver(layerAt(beneath, i), top)));
      }
    }
  }
  for (std::size_t y = 0; y < kRows; ++y) {
    std::cout << "worst difference at alpha " << int{kAlphas[y]} << ": " << worst[y] << " of 255\n";
    EXPECT_LE(worst[y], kMostOffAtEdges) << int{kAlphas[y]};
  }
  std::cout << "worst difference of the hue alone: " << worstHue << " of 255\n";
  EXPECT_LE(worstHue, kMostOff);
  EXPECT_EQ(worst[0], 0) << "what is transparent stays so";
  EXPECT_LE(worst[kRows - 1], kMostOff) << "opaque";
}

TEST_F(Tint, OfAnOpaqueImageKeepsSaturationAndLuminosity) {
  UIImage* image =
      picture(kColors, 1, [](std::size_t x, std::size_t) { return gridPixel(x, kRows - 1); });
  const Bytes before = pixelsOf(image);
  const Bytes after = pixelsOf(tint(image, hsb(2.0 / 3, 1, 1, 1)));
  for (std::size_t i = 0; i < kColors; ++i) {
    const Layer was = layerAt(before, i);
    const Layer is = layerAt(after, i);
    EXPECT_NEAR(lum(is.color), lum(was.color), 1.5 / 255);
    // Near black and white, a colour cannot be as saturated as at medium brightness.
    EXPECT_LE(sat(is.color), sat(was.color) + 2.5 / 255);
    EXPECT_GE(is.color[2] + 1.0 / 255, std::max(is.color[0], is.color[1])) << "blue";
    EXPECT_EQ(is.alpha, 1);
  }
}

TEST_F(Tint, LeavesGreyAsItIs) {
  UIImage* image = picture(256, 1, [](std::size_t x, std::size_t) {
    const auto grey = static_cast<std::uint8_t>(x);
    return Pixel{grey, grey, grey, 255};
  });
  const Bytes before = pixelsOf(image);
  const Bytes after = pixelsOf(tint(image, hsb(0.3, 1, 1, 1)));
  for (std::size_t i = 0; i < before.size(); ++i) ASSERT_NEAR(after[i], before[i], 1) << i;
}

TEST_F(Tint, MakesSoftEdgesDarkerAndMoreOpaque) {
  // White with half coverage: 128, then black over it, then white again for a quarter.
  UIImage* image =
      picture(1, 1, [](std::size_t, std::size_t) { return Pixel{128, 128, 128, 128}; });
  const Bytes after = pixelsOf(tint(image, hsb(0, 1, 1, 0)));
  EXPECT_NEAR(after[0], 112, 1);
  EXPECT_NEAR(after[3], 207, 1);
  EXPECT_EQ(after[0], after[1]);
  EXPECT_EQ(after[0], after[2]);
}

TEST_F(Tint, OfNoColorChangesNoHue) {
  UIImage* image = grid();
  const Bytes before = pixelsOf(image);
  const Bytes after = pixelsOf(tint(image, nullptr));
  for (std::size_t i = 0; i < kColors * kRows; ++i) {
    const Layer expected = expectedTint(layerAt(before, i), {}, 0);
    ASSERT_LE(difference(layerAt(after, i), expected), kMostOff) << i;
  }
  EXPECT_EQ(after, pixelsOf(tint(image, hsb(0.5, 1, 1, 0))));
}

TEST_F(Tint, OfAColorWithoutHueIsRed) {
  UIImage* image = plainPicture(60, 90, 200);
  EXPECT_EQ(pixelsOf(tint(image, UIColor::whiteColor())), pixelsOf(tint(image, rgb(1, 0, 0))));
}

TEST_F(Tint, StandsUpright) {
  UIImage* image = picture(3, 2, [](std::size_t x, std::size_t y) {
    return x == 0 && y == 0 ? Pixel{255, 0, 0, 255} : Pixel{};
  });
  const Bytes after = pixelsOf(tint(image, hsb(0, 1, 1, 1)));
  Bytes expected(3 * 2 * 4);
  expected[0] = expected[3] = 255;
  EXPECT_EQ(after, expected);
}

TEST_F(Tint, IsOnePixelAPoint) {
  UIImage* image = plainPicture(200, 100, 50);
  for (const auto& [scale, side] : {std::pair<CGFloat, std::size_t>{1, 40}, {2, 20}, {4, 10}}) {
    auto* large =
        send<UIImage*>(objc_getClass("UIImage"), "imageWithCGImage:scale:orientation:"_sel,
                       send<CGImageRef>(image, "CGImage"_sel), scale, NSInteger{0});
    large = send<UIImage*>(large, "imageWithRenderingMode:"_sel, NSInteger{2});
    UIImage* result = tint(large, hsb(0.6, 1, 1, 1));
    EXPECT_EQ(send<CGFloat>(result, "scale"_sel), 1);
    const auto size = send<CGSize>(result, "size"_sel);
    EXPECT_EQ(size.width, side);
    EXPECT_EQ(size.height, side);
    EXPECT_EQ(CGImageGetWidth(send<CGImageRef>(result, "CGImage"_sel)), side);
    // The source gives only its pixels.
    EXPECT_EQ(send<NSInteger>(result, "renderingMode"_sel), 0);
    EXPECT_FALSE(send<bool>(result, "_isResizable"_sel));
    const Layer expected = hueOver({{200 / 255.0, 100 / 255.0, 50 / 255.0}, 1}, {pureHue(0.6), 1});
    const Bytes pixels = pixelsOf(result);
    for (std::size_t i = 0; i < side * side; ++i)
      ASSERT_LE(difference(layerAt(pixels, i), expected), kMostOff) << scale << ' ' << i;
  }
}

/// Both are drawn into a context: the first normally, the second in hue mode.
TEST(HueMode, IsTheFormulaForImagesToo) {
  double worst = 0;
  // The grid's rows in order, over a source with shifted colours and alphas.
  for (std::size_t shift = 0; shift < kColors; shift += 7) {
    for (std::size_t turn = 0; turn < kRows; ++turn) {
      Bytes under, top;
      for (std::size_t y = 0; y < kRows; ++y) {
        for (std::size_t x = 0; x < kColors; ++x) {
          const Pixel a = gridPixel(x, y);
          const Pixel b = gridPixel((x * 5 + shift) % kColors, (y + turn) % kRows);
          under.insert(under.end(), a.begin(), a.end());
          top.insert(top.end(), b.begin(), b.end());
        }
      }
      const Bitmap image(createImage(top, {.width = kColors, .height = kRows}));
      Bytes result = under;
      const Context context(createContext(result, kColors, kRows));
      CGContextSetBlendMode(context, CGBlendMode::hue);
      CGContextDrawImage(context, {{0, 0}, {kColors, kRows}}, image);
      for (std::size_t i = 0; i < kColors * kRows; ++i) {
        const Layer expected = hueOver(layerAt(under, i), layerAt(top, i));
        worst = std::max(worst, difference(layerAt(result, i), expected));
      }
    }
  }
  std::cout << "worst difference: " << worst << " of 255\n";
  EXPECT_LE(worst, kMostOff);
}

}  // namespace
