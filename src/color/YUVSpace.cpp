// The category on UIColor: Y, U and V of a colour, and distances between two.
#include "color/YUVSpace.h"

#include "color/components.h"
#include "objc/define.h"

namespace {

using varnix::Color::rgb;
using varnix::Color::Rgb;

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

template <const Weights& Row>
float component(UIColor* color) {
  return weigh(Row, rgb(color));
}

float squareDistance(UIColor* to, UIColor* from) {
  const Rgb a = rgb(to);
  const Rgb b = rgb(from);
  const float y = weigh(kY, a) - weigh(kY, b);
  const float u = weigh(kU, a) - weigh(kU, b);
  const float v = weigh(kV, a) - weigh(kV, b);
  return y * y + u * u + v * v;
}

float distance(UIColor* to, UIColor* from) { return __builtin_sqrtf(squareDistance(to, from)); }

}  // namespace

using objc::ClassMethod;

OBJC_CATEGORY(UIColor, YUVSpace, ClassMethod<"yComponentFromColor:", &component<kY>>,
              ClassMethod<"uComponentFromColor:", &component<kU>>,
              ClassMethod<"vComponentFromColor:", &component<kV>>,
              ClassMethod<"YUVSpaceDistanceToColor:fromColor:", &distance>,
              ClassMethod<"YUVSpaceSquareDistanceToColor:fromColor:", &squareDistance>)
