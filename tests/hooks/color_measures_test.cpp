// What UIColor answers in a dyed process: components, and measures in YUV space. Others may have
// methods with these names.
#include <array>

#include "support/encodings.h"
#include "support/hosted.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;
using Hsb = std::array<CGFloat, 4>;

class ColorMeasures : public Hosted {
 protected:
  static Hsb hsb(UIColor* color) {
    return {send<CGFloat>(color, "hue"_sel), send<CGFloat>(color, "saturation"_sel),
            send<CGFloat>(color, "brightness"_sel), send<CGFloat>(color, "alpha"_sel)};
  }
  static bool noHsb(UIColor*, SEL, CGFloat* hue, CGFloat*, CGFloat*, CGFloat*) {
    *hue = 0.5;
    return false;
  }
  static CGFloat degrees(UIColor*, SEL) { return 210; }
  static int asNumber(UIColor*, SEL) { return 7; }
};

TEST_F(ColorMeasures, AreTheColorsComponents) {
  application("");
  EXPECT_EQ(hsb(test::rgb(0, 0, 1)), (Hsb{4.0 / 6, 1, 1, 1}));
  EXPECT_EQ(hsb(UIColor::colorWithRed(0.5, 0.25, 0.25, 0.125)), (Hsb{0, 0.5, 0.5, 0.125}));
  EXPECT_EQ(hsb(UIColor::whiteColor()), (Hsb{0, 0, 1, 1}));
  EXPECT_EQ(hsb(nullptr), (Hsb{}));
}

TEST_F(ColorMeasures, AreZeroForAColorWithoutComponents) {
  application("");
  UIColor* color = test::rgb(0.2, 0.4, 0.6);
  class_replaceMethod(objc_getClass("UIColor"), "getHue:saturation:brightness:alpha:"_sel,
                      reinterpret_cast<IMP>(&noHsb), "B@:^d^d^d^d");
  EXPECT_EQ(hsb(color), (Hsb{}));
}

TEST_F(ColorMeasures, HaveTheirEncodings) {
  application("");
  auto types = [](Class cls, const char* name) {
    objc_method* method = class_getInstanceMethod(cls, sel_registerName(name));
    return std::string(method == nullptr ? "" : method_getTypeEncoding(method));
  };
  for (const char* name : {"hue", "saturation", "brightness", "alpha"})
    EXPECT_EQ(types(objc_getClass("UIColor"), name), nativeEncoding("d@:")) << name;
  Class cls = objc_getMetaClass("UIColor");
  for (const char* name : {"yComponentFromColor:", "uComponentFromColor:", "vComponentFromColor:"})
    EXPECT_EQ(types(cls, name), "f@:@") << name;
  for (const char* name :
       {"YUVSpaceDistanceToColor:fromColor:", "YUVSpaceSquareDistanceToColor:fromColor:"})
    EXPECT_EQ(types(cls, name), "f@:@@") << name;
}

TEST_F(ColorMeasures, AreNotThereInAProcessThatIsNotDyed) {
  application("<key>enabled</key><false/>");
  for (const char* name : {"hue", "saturation", "brightness", "alpha"})
    EXPECT_FALSE(class_respondsToSelector(objc_getClass("UIColor"), sel_registerName(name)))
        << name;
  EXPECT_FALSE(class_respondsToSelector(objc_getMetaClass("UIColor"), "yComponentFromColor:"_sel));
  EXPECT_EQ(passedOver(), Lines());
}

TEST_F(ColorMeasures, OfSomebodyElseStayAndCountForNothing) {
  settings("");
  start("com.example.app");
  Class cls = objc_getClass("UIColor");
  class_addMethod(cls, "hue"_sel, reinterpret_cast<IMP>(&degrees), "d@:");
  class_addMethod(cls, "alpha"_sel, reinterpret_cast<IMP>(&asNumber), "i@:");
  load();
  UIColor* color = test::rgb(0, 0, 1);
  EXPECT_EQ(send<CGFloat>(color, "hue"_sel), 210);
  EXPECT_EQ(send<int>(color, "alpha"_sel), 7);
  EXPECT_EQ(send<CGFloat>(color, "saturation"_sel), 1);
  EXPECT_EQ(passedOver(), (Lines{"-[UIColor hue]: the class has a method of that name",
                                 "-[UIColor alpha]: the class has a method of that name"}));
}

// The icon's colour still gets a saturation of 0.76.
TEST_F(ColorMeasures, OfSomebodyElseAreNotAskedForTheIconsColor) {
  icons["com.example.app"] = std::string(VARNIX_SAMPLES) + "/icons/com.example.mail.png";
  settings("<key>global_color_type</key><integer>1</integer>");
  start("com.example.app");
  Class cls = objc_getClass("UIColor");
  for (const char* name : {"hue", "saturation", "brightness", "alpha"})
    class_addMethod(cls, sel_registerName(name), reinterpret_cast<IMP>(&degrees), "d@:");
  load();
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), "#308ff7ff");
}

}  // namespace
