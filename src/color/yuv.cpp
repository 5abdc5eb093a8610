#include "color/yuv.h"

#include "color/components.h"

namespace varnix::Color {

namespace {

/// BT.601.
struct Weights {
  double red, green, blue;
};
constexpr Weights kY{0.299, 0.587, 0.114};
constexpr Weights kU{-0.14713, -0.28886, 0.436};
constexpr Weights kV{0.615, -0.51499, -0.10001};

/// Rounded to single precision once, at the end.
float weigh(const Weights& weights, const Rgb& color) {
  return static_cast<float>(weights.red * static_cast<double>(color.red) +
                            weights.green * static_cast<double>(color.green) +
                            weights.blue * static_cast<double>(color.blue));
}

}  // namespace

float yComponent(UIColor* color) { return weigh(kY, rgb(color)); }
float uComponent(UIColor* color) { return weigh(kU, rgb(color)); }
float vComponent(UIColor* color) { return weigh(kV, rgb(color)); }

float yuvSquareDistance(UIColor* to, UIColor* from) {
  const Rgb a = rgb(to);
  const Rgb b = rgb(from);
  const float y = weigh(kY, a) - weigh(kY, b);
  const float u = weigh(kU, a) - weigh(kU, b);
  const float v = weigh(kV, a) - weigh(kV, b);
  return y * y + u * u + v * v;
}

float yuvDistance(UIColor* to, UIColor* from) {
  return __builtin_sqrtf(yuvSquareDistance(to, from));
}

}  // namespace varnix::Color
