// Conversion of colours to CoreGraphics and back.
#include "CoreGraphics/CoreGraphics.h"
#include "support/hosted.h"

namespace {

using Components = std::vector<CGFloat>;

class UIColorComponents : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  static CGColorRef cgColor(UIColor* color) { return send<CGColorRef>(color, "CGColor"_sel); }
  static Components components(CGColorRef color) {
    const CGFloat* first = CGColorGetComponents(color);
    return {first, first + CGColorGetNumberOfComponents(color)};
  }
  static UIColor* withCGColor(CGColorRef color) {
    return send<UIColor*>(objc_getClass("UIColor"), "colorWithCGColor:"_sel, color);
  }
};

TEST_F(UIColorComponents, AreFourOfAColorAndTwoOfAGrey) {
  EXPECT_EQ(components(cgColor(UIColor::colorWithRed(0.25, 0.5, 0.75, 0.125))),
            (Components{0.25, 0.5, 0.75, 0.125}));
  EXPECT_EQ(components(cgColor(UIColor::whiteColor())), (Components{1, 1}));
  EXPECT_EQ(components(cgColor(UIColor::blackColor())), (Components{0, 1}));
}

TEST_F(UIColorComponents, MakeAnEqualColor) {
  UIColor* const kColors[] = {UIColor::colorWithRed(0.25, 0.5, 0.75, 0.125), UIColor::whiteColor(),
                              UIColor::blackColor()};
  for (UIColor* color : kColors)
    EXPECT_TRUE(send(withCGColor(cgColor(color)), NSObject::isEqual, color));
  // White as red, green and blue is a different colour from white as a grey.
  EXPECT_FALSE(send(withCGColor(cgColor(UIColor::colorWithRed(1, 1, 1, 1))), NSObject::isEqual,
                    UIColor::whiteColor()));
}

TEST_F(UIColorComponents, AreNoneOfNil) { EXPECT_EQ(withCGColor(nullptr), nullptr); }

}  // namespace
