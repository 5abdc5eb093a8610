#include "picker/reference.h"

#include <algorithm>
#include <cmath>

namespace reference {

namespace {

struct Yuv {
  float y, u, v;
};

/// A byte as the sampler passes it to the shader.
float channel(std::uint8_t byte) { return static_cast<float>(byte) * (1.0F / 255.0F); }

Yuv yuvOf(const Pixel& pixel) {
  const float r = channel(pixel.red);
  const float g = channel(pixel.green);
  const float b = channel(pixel.blue);
  return {0.299F * r + 0.587F * g + 0.114F * b, -0.14713F * r + -0.28886F * g + 0.436F * b,
          0.615F * r + -0.51499F * g + -0.10001F * b};
}

float distance(const Yuv& a, const Yuv& b) {
  const float y = a.y - b.y;
  const float u = a.u - b.u;
  const float v = a.v - b.v;
  return std::sqrt(y * y + u * u + v * v);
}

#if defined(__x86_64__)
constexpr int kHalf = 1;  // The renderer rounds up if the processor has an instruction for that.
#else
constexpr int kHalf = 0;
#endif

std::uint8_t mean(std::uint8_t a, std::uint8_t b) {
  return static_cast<std::uint8_t>((a + b + kHalf) >> 1);
}

Pixel mean(const Pixel& a, const Pixel& b) {
  return {mean(a.red, b.red), mean(a.green, b.green), mean(a.blue, b.blue), mean(a.alpha, b.alpha)};
}

const Pixel& texel(const Pixels& image, int x, int y) {
  const int column = (x + kSide) % kSide;
  const int row = (y + kSide) % kSide;
  return image[static_cast<std::size_t>(row * kSide + column)];
}

/// The mean of four texels, wrapped at the edges.
Pixel corner(const Pixels& image, int x, int y) {
  return mean(mean(texel(image, x - 1, y - 1), texel(image, x, y - 1)),
              mean(texel(image, x - 1, y), texel(image, x, y)));
}

std::array<Yuv, std::size_t{kProcessedSide} * kProcessedSide> samplesOf(const Pixels& image) {
  std::array<Yuv, std::size_t{kProcessedSide} * kProcessedSide> samples{};
  std::size_t next = 0;
  for (int i = 0; i < kProcessedSide; ++i) {
    for (int j = 0; j < kProcessedSide; ++j) samples[next++] = yuvOf(corner(image, i, j));
  }
  return samples;
}

using Whole = std::array<int, 3>;

int whole(CGFloat component) { return static_cast<int>(std::max(component * 255, CGFloat{0})); }
Whole wholeOf(const Color& color) {
  return {whole(color.red), whole(color.green), whole(color.blue)};
}
Whole wholeOf(const Pixel& pixel) { return {pixel.red, pixel.green, pixel.blue}; }

unsigned squaredDistance(const Whole& a, const Whole& b) {
  int sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
  return static_cast<unsigned>(sum);
}

/// A colour's bytes, and how often it occurred.
struct Candidate {
  Pixel bytes{0, 0, 0, 0};

  void consider(const Pixel& pixel) {
    if (pixel.alpha > bytes.alpha) bytes = pixel;
  }
};

template <class Function>
void forEachProcessed(const Pixels& frame, Function function) {
  for (int y = 0; y < kProcessedSide; ++y) {
    for (int x = 0; x < kProcessedSide; ++x)
      function(frame[static_cast<std::size_t>(y * kSide + x)]);
  }
}

constexpr unsigned kFarFromBackground = 16257;  // and more
constexpr unsigned kFarFromPrimary = 5853;      // and more

struct Measured {
  float red, green, blue;
};

Measured measured(const Color& color) {
  if (color.isGrey) return {0, 0, 0};
  return {static_cast<float>(color.red), static_cast<float>(color.green),
          static_cast<float>(color.blue)};
}

Color fromHsb(CGFloat hue, CGFloat saturation, CGFloat brightness) {
  const CGFloat position = hue * 6;
  const int sector = static_cast<int>(position) % 6;
  const CGFloat part = position - std::floor(position);
  const CGFloat low = brightness * (1 - saturation);
  const CGFloat falling = brightness * (1 - saturation * part);
  const CGFloat rising = brightness * (1 - saturation * (1 - part));
  switch (sector) {
    case 0:
      return {brightness, rising, low};
    case 1:
      return {falling, brightness, low};
    case 2:
      return {low, brightness, rising};
    case 3:
      return {low, falling, brightness};
    case 4:
      return {rising, low, brightness};
    default:
      return {brightness, low, falling};
  }
}

}  // namespace

Pixels frameOf(const Pixels& image) {
  Pixels frame;
  frame.fill({0, 0, 0, 255});
  const auto samples = samplesOf(image);
  for (int y = 0; y < kProcessedSide; ++y) {
    for (int x = 0; x < kProcessedSide; ++x) {
      const Pixel& current = texel(image, x, y);
      const Yuv yuv = yuvOf(current);
      float accumulator = 0;
      for (const Yuv& sample : samples) {
        if (distance(sample, yuv) < 0.1F) accumulator += 0.0039F;
      }
      const auto alpha = std::lrintf(std::min(accumulator, 1.0F) * 255.0F);
      frame[static_cast<std::size_t>(y * kSide + x)] = {current.red, current.green, current.blue,
                                                        static_cast<std::uint8_t>(alpha)};
    }
  }
  return frame;
}

Color colorOf(const Pixel& pixel) {
  constexpr CGFloat kRange = 255;
  return {pixel.red / kRange, pixel.green / kRange, pixel.blue / kRange};
}

Color backgroundOf(const Pixels& frame) {
  Candidate best;
  forEachProcessed(frame, [&](const Pixel& pixel) { best.consider(pixel); });
  return colorOf(best.bytes);
}

Scheme schemeOf(const Pixels& frame, const Color& background) {
  const Whole ground = wholeOf(background);
  Candidate primary;
  forEachProcessed(frame, [&](const Pixel& pixel) {
    if (squaredDistance(wholeOf(pixel), ground) >= kFarFromBackground) primary.consider(pixel);
  });
  Candidate secondary;
  forEachProcessed(frame, [&](const Pixel& pixel) {
    const Whole color = wholeOf(pixel);
    if (squaredDistance(color, ground) >= kFarFromBackground &&
        squaredDistance(color, wholeOf(primary.bytes)) >= kFarFromPrimary) {
      secondary.consider(pixel);
    }
  });
  Color second = colorOf(secondary.bytes);
  if (!contrasts(background, second)) {
    second = yOf(background) < 0.5F ? Color{1, 1, 1, true} : Color{0, 0, 0, true};
  }
  return {background, colorOf(primary.bytes), second};
}

Color farthestFrequent(const std::vector<Pixel>& frame, unsigned width, unsigned height,
                       const Color& from, unsigned limit) {
  Candidate best;
  for (unsigned y = 0; y < height / 2; ++y) {
    for (unsigned x = 0; x < width / 2; ++x) {
      const Pixel& pixel = frame[y * width + x];
      if (squaredDistance(wholeOf(pixel), wholeOf(from)) > limit) best.consider(pixel);
    }
  }
  return colorOf(best.bytes);
}

float yOf(const Color& color) {
  const Measured m = measured(color);
  const double sum = 0.299 * static_cast<double>(m.red) + 0.587 * static_cast<double>(m.green) +
                     0.114 * static_cast<double>(m.blue);
  return static_cast<float>(sum);
}

bool contrasts(const Color& background, const Color& foreground) {
  if (std::fabs(yOf(background) - yOf(foreground)) * 255.0F < 125.0F) return false;
  const Measured a = measured(background);
  const Measured b = measured(foreground);
  const float sum =
      std::fabs(a.red - b.red) + std::fabs(a.green - b.green) + std::fabs(a.blue - b.blue);
  return sum * 255.0F > 500.0F;
}

Hsb hsbOf(const Color& color) {
  const auto [least, most] = std::minmax({color.red, color.green, color.blue});
  const CGFloat range = most - least;
  if (range == 0) return {0, 0, most};
  CGFloat hue = 0;
  if (most == color.red) hue = (color.green - color.blue) / range / 6;
  else if (most == color.green) hue = (color.blue - color.red) / range / 6 + CGFloat{1} / 3;
  else hue = (color.red - color.green) / range / 6 + CGFloat{2} / 3;
  return {hue < 0 ? hue + 1 : hue, range / most, most};
}

Color importantOf(const Scheme& scheme) {
  Color chosen = scheme.primary;
  for (const Color* color : {&scheme.secondary, &scheme.background}) {
    if (hsbOf(*color).saturation > hsbOf(chosen).saturation) chosen = *color;
  }
  const Hsb hsb = hsbOf(chosen);
  const double saturation = hsb.saturation;
  if (saturation <= 0.1 || saturation >= 0.63) return chosen;
  return fromHsb(hsb.hue, CGFloat{0.76}, hsb.brightness);
}

}  // namespace reference
