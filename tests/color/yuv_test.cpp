// Colours measured in YUV space.
#include <cmath>

#include "picker/analysis.h"

namespace {

using namespace test;
using pictures::Picture;

class ColorYuv : public Analysis {
 protected:
  template <class Selector, class... A>
  static float measure(Selector selector, A... colors) {
    return send<float>(objc::classOf<UIColor>(), selector, colors...);
  }
  static float y(UIColor* color) { return measure("yComponentFromColor:"_sel, color); }
  static float u(UIColor* color) { return measure("uComponentFromColor:"_sel, color); }
  static float v(UIColor* color) { return measure("vComponentFromColor:"_sel, color); }
  static float distance(UIColor* to, UIColor* from) {
    return measure("YUVSpaceDistanceToColor:fromColor:"_sel, to, from);
  }
  static float squared(UIColor* to, UIColor* from) {
    return measure("YUVSpaceSquareDistanceToColor:fromColor:"_sel, to, from);
  }
};

TEST_F(ColorYuv, YuvOfPrimaries) {
  UIColor* red = test::rgb(1, 0, 0);
  UIColor* green = test::rgb(0, 1, 0);
  UIColor* blue = test::rgb(0, 0, 1);
  EXPECT_EQ(y(red), 0.299F);
  EXPECT_EQ(y(green), 0.587F);
  EXPECT_EQ(y(blue), 0.114F);
  EXPECT_EQ(u(red), -0.14713F);
  EXPECT_EQ(u(green), -0.28886F);
  EXPECT_EQ(u(blue), 0.436F);
  EXPECT_EQ(v(red), 0.615F);
  EXPECT_EQ(v(green), -0.51499F);
  EXPECT_EQ(v(blue), -0.10001F);
  UIColor* white = test::rgb(1, 1, 1);
  EXPECT_EQ(y(white), 1);
  EXPECT_EQ(u(white), static_cast<float>(-0.14713 - 0.28886 + 0.436));
  EXPECT_EQ(v(white), static_cast<float>(0.615 - 0.51499 - 0.10001));
}

/// Single-precision components, double products and sums, and one rounding at the end.
TEST_F(ColorYuv, YuvIsExact) {
  const Picture noise = pictures::noise().front();
  for (std::size_t i = 0; i < 300; ++i) {
    const std::uint8_t* p = &noise.rgba[i * 4];
    UIColor* color = test::rgb(p[0] / 255.0, p[1] / 255.0, p[2] / 255.0);
    std::array<double, 3> c{};
    for (std::size_t k = 0; k < 3; ++k)
      c[k] = static_cast<double>(static_cast<float>(p[k] / 255.0));
    auto weighed = [&](double red, double green, double blue) {
      const double first = red * c[0];
      const double second = green * c[1];
      const double third = blue * c[2];
      return static_cast<float>(first + second + third);
    };
    EXPECT_EQ(y(color), weighed(0.299, 0.587, 0.114)) << i;
    EXPECT_EQ(u(color), weighed(-0.14713, -0.28886, 0.436)) << i;
    EXPECT_EQ(v(color), weighed(0.615, -0.51499, -0.10001)) << i;
  }
}

TEST_F(ColorYuv, NilAndGreysMeasureNothing) {
  for (UIColor* color :
       {static_cast<UIColor*>(nullptr), UIColor::whiteColor(), UIColor::blackColor()}) {
    EXPECT_EQ(y(color), 0);
    EXPECT_EQ(u(color), 0);
    EXPECT_EQ(v(color), 0);
  }
  EXPECT_EQ(distance(nullptr, UIColor::whiteColor()), 0);
  EXPECT_EQ(distance(nullptr, nullptr), 0);
  UIColor* white = test::rgb(1, 1, 1);
  EXPECT_EQ(distance(UIColor::whiteColor(), white), distance(test::rgb(0, 0, 0), white));
}

TEST_F(ColorYuv, YuvDistances) {
  UIColor* black = test::rgb(0, 0, 0);
  UIColor* red = test::rgb(1, 0, 0);
  const float sum = 0.299F * 0.299F + 0.14713F * 0.14713F + 0.615F * 0.615F;
  EXPECT_FLOAT_EQ(squared(red, black), sum);
  EXPECT_FLOAT_EQ(squared(black, red), sum);
  EXPECT_EQ(distance(red, black), std::sqrt(squared(red, black)));
  EXPECT_NEAR(distance(red, black), 0.69948F, 1e-5F);
  EXPECT_EQ(distance(red, red), 0);
  EXPECT_EQ(squared(red, red), 0);
}

TEST_F(ColorYuv, YuvDistanceIsExact) {
  const Picture noise = pictures::noise().front();
  for (std::size_t i = 0; i < 200; ++i) {
    const std::uint8_t* p = &noise.rgba[i * 8];
    UIColor* a = test::rgb(p[0] / 255.0, p[1] / 255.0, p[2] / 255.0);
    UIColor* b = test::rgb(p[4] / 255.0, p[5] / 255.0, p[6] / 255.0);
    const float dy = y(a) - y(b);
    const float du = u(a) - u(b);
    const float dv = v(a) - v(b);
    // Separate, so that no processor fuses a product and a sum.
    const volatile float yy = dy * dy;
    const volatile float uu = du * du;
    const volatile float vv = dv * dv;
    const float sum = yy + uu + vv;
    EXPECT_EQ(squared(a, b), sum) << i;
    EXPECT_EQ(distance(a, b), std::sqrt(sum)) << i;
  }
}

TEST_F(ColorYuv, MethodsHaveTheirEncodings) {
  Class color = objc_getClass("UIColor");
  for (const char* name :
       {"yComponentFromColor:", "uComponentFromColor:", "vComponentFromColor:"}) {
    objc_method* method = class_getClassMethod(color, sel_registerName(name));
    ASSERT_NE(method, nullptr) << name;
    EXPECT_STREQ(method_getTypeEncoding(method), "f@:@") << name;
  }
  for (const char* name :
       {"YUVSpaceDistanceToColor:fromColor:", "YUVSpaceSquareDistanceToColor:fromColor:"}) {
    objc_method* method = class_getClassMethod(color, sel_registerName(name));
    ASSERT_NE(method, nullptr) << name;
    EXPECT_STREQ(method_getTypeEncoding(method), "f@:@@") << name;
  }
}

}  // namespace
