// The keyboard's background and how it is rendered.
#include "support/encodings.h"
#include "support/hosted.h"
#include "support/recorded.h"

namespace {

using namespace test;

class Keyboard : public Hosted {
 protected:
  static NSObject* keyboard() {
    auto* raw = send<NSObject*>(objc_getClass("UIKeyboard"), "alloc"_sel);
    return objc_autorelease(send<NSObject*>(raw, "initWithFrame:"_sel, CGRect{{1, 2}, {3, 4}}));
  }
  static bool isOpaque(NSObject* keyboard) { return send<bool>(keyboard, "isOpaque"_sel); }
  static std::string background(NSObject* keyboard) {
    return hex(send<UIColor*>(keyboard, "backgroundColor"_sel));
  }
  static bool isLight() {
    return send<bool>(make<NSObject>("UIKBRenderConfig"), "lightKeyboard"_sel);
  }
};

TEST_F(Keyboard, IsSeeThroughOverTheDyeWhenNothingIsStored) {
  application("");
  NSObject* made = keyboard();
  EXPECT_FALSE(isOpaque(made));
  EXPECT_EQ(background(made), "#de3027ff");
  EXPECT_FALSE(isLight());
  const CGRect frame = send<CGRect>(made, "frame"_sel);
  EXPECT_EQ(frame.origin.x, 1);
  EXPECT_EQ(frame.size.height, 4);
}

TEST_F(Keyboard, TakesItsOwnColor) {
  application(
      "<key>keyboard_color_type</key><integer>2</integer><key>keyboard_color</key><string>#010203</"
      "string>");
  NSObject* made = keyboard();
  EXPECT_FALSE(isOpaque(made));
  EXPECT_EQ(background(made), "#010203ff");
  EXPECT_FALSE(isLight());
}

TEST_F(Keyboard, OfTypeOneIsThePlatforms) {
  application("<key>keyboard_color_type</key><integer>1</integer>");
  NSObject* made = keyboard();
  EXPECT_TRUE(isOpaque(made));
  EXPECT_EQ(background(made), "nil");
  EXPECT_TRUE(isLight());
  NSObject* dark = make<NSObject>("UIKBRenderConfig");
  send<void>(dark, "setLightKeyboard:"_sel, false);
  EXPECT_FALSE(send<bool>(dark, "lightKeyboard"_sel));
}

// The original is asked only if its answer matters.
TEST_F(Keyboard, ThatIsDyedAsksNobodyWhetherItIsLight) {
  settings("");
  start("com.example.app");
  Recorded<"lightKeyboard", bool()>::install(objc_getClass("UIKBRenderConfig"));
  load();
  EXPECT_FALSE(isLight());
  EXPECT_EQ(calls(), std::vector<std::string>());
}

TEST_F(Keyboard, OfTypeOneAsksThePlatformWhetherItIsLight) {
  settings("<key>keyboard_color_type</key><integer>1</integer>");
  start("com.example.app");
  Recorded<"lightKeyboard", bool()>::install(objc_getClass("UIKBRenderConfig"));
  load();
  EXPECT_TRUE(isLight());
  EXPECT_EQ(calls(), std::vector<std::string>{"lightKeyboard"});
}

TEST_F(Keyboard, IsDyedInSpringBoardToo) {
  springBoard("<key>keyboard_color_type</key><integer>3</integer>");
  EXPECT_EQ(background(keyboard()), "#de3027ff");
}

TEST_F(Keyboard, ThatExistsKeepsItsColor) {
  settings("");
  start("com.example.app");
  NSObject* before = keyboard();
  load();
  EXPECT_TRUE(isOpaque(before));
  EXPECT_EQ(background(before), "nil");
}

TEST_F(Keyboard, AnInitialiserThatFailsStaysNil) {
  settings("");
  start("com.example.app");
  static auto fails = +[](NSObject* self, SEL, CGRect) -> NSObject* {
    objc_release(self);
    return nullptr;
  };
  class_addMethod(objc_getClass("UIKeyboard"), sel_registerName("initWithFrame:"),
                  reinterpret_cast<IMP>(fails),
                  test::nativeEncoding("@@:{CGRect={CGPoint=dd}{CGSize=dd}}").c_str());
  load();
  EXPECT_EQ(keyboard(), nullptr);
}

}  // namespace
