// The icon's colour as a plain function, for callers other than the dye.
#include <filesystem>

#include "picker/analysis.h"
#include "prefs/VNXManager.h"
#include "support/recorded.h"

namespace {

using namespace test;

UIColor* iconColor(NSString* identifier, UIColor* fallback, VNXManager* manager) {
  static auto* function =
      plainFunction<UIColor*(NSString*, UIColor*, VNXManager*)>("plainIconColor");
  return function(identifier, fallback, manager);
}

class IconFunction : public PlainAnalysis {
 protected:
  void SetUp() override {
    icons["com.example.mail"] = VARNIX_SAMPLES "/icons/com.example.mail.png";
    PlainAnalysis::SetUp();
  }
  static int passes() { return static_cast<int>(calls().size()); }
};

TEST_F(IconFunction, WithoutAManagerIsComputedEachTimeAndNotKept) {
  Recorded<"colorSchemeFromImage:", NSObject*(UIImage*)>::install(objc_getClass("CQColorPicker"));
  UIColor* first = iconColor("com.example.mail"_ns, rgb(1, 0, 0), nullptr);
  EXPECT_EQ(passes(), 2);
  UIColor* second = iconColor("com.example.mail"_ns, rgb(1, 0, 0), nullptr);
  EXPECT_EQ(passes(), 4);
  EXPECT_EQ(hex(first), hex(second));
  EXPECT_NE(hex(first), "#ff0000ff");
  EXPECT_FALSE(std::filesystem::exists(settingsPath()));
}

TEST_F(IconFunction, IsTheFallbackItselfWithoutIdentifierOrIcon) {
  UIColor* fallback = rgb(0, 1, 0);
  EXPECT_EQ(iconColor(nullptr, fallback, nullptr), fallback);
  EXPECT_EQ(iconColor("com.example.none"_ns, fallback, nullptr), fallback);
  EXPECT_EQ(iconColor("com.example.none"_ns, nullptr, nullptr), nullptr);
}

objc::Hook<UIColor::colorWithRed> withRed;
UIColor* noColor(Class, SEL, CGFloat, CGFloat, CGFloat, CGFloat) { return nullptr; }

TEST_F(IconFunction, IsNilAndNotTheFallbackWhereTheImageHasNoColor) {
  UIColor* fallback = rgb(0, 1, 0);
  // Now neither the picker nor the average can make a colour.
  withRed.install<&noColor>(objc_getMetaClass("UIColor"), UIColor::colorWithRed);
  send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, NSInteger{2});
  EXPECT_EQ(iconColor("com.example.mail"_ns, fallback, nullptr), nullptr);
}

}  // namespace
