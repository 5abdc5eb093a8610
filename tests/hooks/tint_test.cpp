// The tint of views, switches and the status bar, in applications and in SpringBoard.
#include "support/hosted.h"

namespace {

using namespace test;

constexpr const char* kGlobal = "<key>global_color</key><string>#112233</string>";
constexpr const char* kDyed = "#112233ff";

class Tint : public Hosted {
 protected:
  static UIColor* stored(UIView* view) { return send<UIColor*>(view, "_interactionTintColor"_sel); }
  static NSObject* statusBar(UIColor* background, UIColor* foreground, NSObject* request) {
    auto* raw = send<NSObject*>(objc_getClass("UIStatusBarNewUIStyleAttributes"), "alloc"_sel);
    return objc_autorelease(send<NSObject*>(raw,
                                            "initWithRequest:backgroundColor:foregroundColor:"_sel,
                                            request, background, foreground));
  }
  static std::string foreground(NSObject* attributes) {
    return hex(send<UIColor*>(attributes, "foregroundColor"_sel));
  }
};

TEST_F(Tint, ApplicationViewAnswersTheDye) {
  application(kGlobal);
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), kDyed);
}

TEST_F(Tint, EveryKindOfViewAnswersTheDyeInApplications) {
  application(kGlobal);
  for (const char* name :
       {"UIButton", "UILabel", "UINavigationBar", "UITabBar", "UISegment", "UISegmentedControl"}) {
    auto* view = make<UIView>(name);
    send(view, UIView::setTintColor, rgb(0, 0, 1));
    EXPECT_EQ(hex(send(view, UIView::tintColor)), kDyed) << name;
  }
}

TEST_F(Tint, ApplicationSetterStoresTheDyeExceptOnSegments) {
  application(kGlobal);
  auto* view = make<UIView>("UIView");
  send(view, UIView::setTintColor, rgb(0, 0, 1));
  EXPECT_EQ(hex(stored(view)), kDyed);
  for (const char* name : {"UISegment", "UISegmentedControl"}) {
    auto* segment = make<UIView>(name);
    send(segment, UIView::setTintColor, rgb(0, 0, 1));
    EXPECT_EQ(hex(stored(segment)), "#0000ffff") << name;
  }
}

TEST_F(Tint, ASetterGivenNilStillStoresTheDye) {
  application(kGlobal);
  auto* view = make<UIView>("UIView");
  send(view, UIView::setTintColor, nullptr);
  EXPECT_EQ(hex(stored(view)), kDyed);
}

TEST_F(Tint, SpringBoardGetterSparesSegments) {
  springBoard(kGlobal);
  EXPECT_EQ(hex(send(make<UIView>("UIView"), UIView::tintColor)), kDyed);
  for (const char* name : {"UISegment", "UISegmentedControl"}) {
    auto* segment = make<UIView>(name);
    EXPECT_EQ(hex(send(segment, UIView::tintColor)), "#007affff") << name;
    send(segment, UIView::setTintColor, rgb(1, 0, 0));
    EXPECT_EQ(hex(send(segment, UIView::tintColor)), "#ff0000ff") << name;
  }
}

TEST_F(Tint, SpringBoardSetterChangesNothing) {
  springBoard(kGlobal);
  auto* view = make<UIView>("UIView");
  send(view, UIView::setTintColor, rgb(1, 0, 0));
  EXPECT_EQ(hex(stored(view)), "#ff0000ff");
  send(view, UIView::setTintColor, nullptr);
  EXPECT_EQ(stored(view), nullptr);
}

TEST_F(Tint, WithoutASegmentClassNoViewIsASegment) {
  settings(kGlobal);
  start("com.apple.springboard", host::ProcessKind::springboard);
  Class segment = objc_getClass("UISegment");
  host::runtime::hideClass("UISegment");
  load();
  auto* raw = send<NSObject*>(send<NSObject*>(segment, "alloc"_sel), "init"_sel);
  auto* view = static_cast<UIView*>(objc_autorelease(raw));
  EXPECT_EQ(hex(send(view, UIView::tintColor)), kDyed);
  EXPECT_EQ(hex(send(make<UIView>("UISegmentedControl"), UIView::tintColor)), "#007affff");
}

TEST_F(Tint, TintFollowsTheSettingsAtTheNextQuestion) {
  application(kGlobal);
  auto* view = make<UIView>("UIView");
  EXPECT_EQ(hex(send(view, UIView::tintColor)), kDyed);
  auto* manager = test::manager();
  NSObject* store = send<NSObject*>(manager, "prefsMan"_sel);
  settings("<key>global_color</key><string>#445566</string>");
  send<void>(store, "notifyEveryone"_sel);
  EXPECT_TRUE(eventually([&] { return hex(send(view, UIView::tintColor)) == "#445566ff"; }));
}

TEST_F(Tint, SwitchStoresTheDyeAsItsOnTint) {
  application(kGlobal);
  auto* toggle = make<UISwitch>("UISwitch");
  send(toggle, UISwitch::setOnTintColor, rgb(1, 0, 0));
  EXPECT_EQ(hex(send<UIColor*>(toggle, "onTintColor"_sel)), kDyed);
}

TEST_F(Tint, SwitchStoresNoTint) {
  application(kGlobal);
  auto* toggle = make<UISwitch>("UISwitch");
  send(toggle, UIView::setTintColor, rgb(1, 0, 0));
  EXPECT_EQ(send(toggle, UIView::tintColor), nullptr);
}

TEST_F(Tint, SwitchLayoutClearsWhatTheApplicationSetBefore) {
  settings(kGlobal);
  start("com.example.app");
  auto* toggle = make<UISwitch>("UISwitch");
  send(toggle, UIView::setTintColor, rgb(1, 0, 0));
  send(toggle, UISwitch::setOnTintColor, rgb(1, 0, 0));
  load();
  EXPECT_EQ(hex(send(toggle, UIView::tintColor)), "#ff0000ff");
  send<void>(toggle, "layoutSubviews"_sel);
  EXPECT_EQ(send(toggle, UIView::tintColor), nullptr);
  EXPECT_EQ(hex(send<UIColor*>(toggle, "onTintColor"_sel)), kDyed);
}

std::vector<std::string> sent;

TEST_F(Tint, SwitchLayoutRunsTheSavedImplementationFirstAndSendsBothMessages) {
  settings(kGlobal);
  start("com.example.app");
  // The library finds our methods, so that the order can be seen.
  static auto layout = +[](UISwitch*, SEL) { sent.push_back("layoutSubviews"); };
  static auto tint =
      +[](UISwitch*, SEL, UIColor* color) { sent.push_back("setTintColor: " + hex(color)); };
  static auto onTint =
      +[](UISwitch*, SEL, UIColor* color) { sent.push_back("setOnTintColor: " + hex(color)); };
  Class cls = objc_getClass("UISwitch");
  class_replaceMethod(cls, sel_registerName("layoutSubviews"), reinterpret_cast<IMP>(layout),
                      "v@:");
  class_replaceMethod(cls, sel_registerName("setTintColor:"), reinterpret_cast<IMP>(tint), "v@:@");
  class_replaceMethod(cls, sel_registerName("setOnTintColor:"), reinterpret_cast<IMP>(onTint),
                      "v@:@");
  load();
  send<void>(make<UISwitch>("UISwitch"), "layoutSubviews"_sel);
  EXPECT_EQ(sent, (std::vector<std::string>{"layoutSubviews", "setTintColor: nil",
                                            std::string("setOnTintColor: ") + kDyed}));
}

TEST_F(Tint, SwitchesAreDyedInSpringBoardToo) {
  springBoard(kGlobal);
  auto* toggle = make<UISwitch>("UISwitch");
  send<void>(toggle, "layoutSubviews"_sel);
  EXPECT_EQ(hex(send<UIColor*>(toggle, "onTintColor"_sel)), kDyed);
  EXPECT_EQ(send(toggle, UIView::tintColor), nullptr);
}

TEST_F(Tint, StatusBarForegroundTakesItsColorInApplications) {
  application(
      "<key>statusbar_color_type</key><integer>2</integer><key>statusbar_color</"
      "key><string>#aabbcc</string>");
  auto* request = make<NSObject>("NSObject");
  auto* attributes = statusBar(rgb(0, 1, 0), rgb(1, 0, 0), request);
  EXPECT_EQ(foreground(attributes), "#aabbccff");
  EXPECT_EQ(hex(send<UIColor*>(attributes, "backgroundColor"_sel)), "#00ff00ff");
  EXPECT_EQ(send<NSObject*>(attributes, "request"_sel), request);
}

TEST_F(Tint, StatusBarFollowsTheDyeForEveryOtherType) {
  for (int type : {0, 3, -1, 99}) {
    settings(std::string(kGlobal) + "<key>statusbar_color_type</key><integer>" +
             std::to_string(type) + "</integer>");
    if (type == 0) {
      start("com.example.app");
      load();
    } else {
      send<void>(send<NSObject*>(manager(), "prefsMan"_sel), "notifyEveryone"_sel);
      host::MainRunLoop::instance().runFor(std::chrono::milliseconds(50));
    }
    EXPECT_EQ(foreground(statusBar(nullptr, rgb(1, 0, 0), nullptr)), kDyed) << type;
  }
}

TEST_F(Tint, StatusBarOfTypeOneKeepsItsColor) {
  application(std::string(kGlobal) + "<key>statusbar_color_type</key><integer>1</integer>");
  EXPECT_EQ(foreground(statusBar(nullptr, rgb(1, 0, 0), nullptr)), "#ff0000ff");
}

TEST_F(Tint, StatusBarKeepsItsColorInSpringBoardWhateverTheType) {
  springBoard("<key>statusbar_color_type</key><integer>2</integer>");
  EXPECT_EQ(foreground(statusBar(nullptr, rgb(1, 0, 0), nullptr)), "#ff0000ff");
}

TEST_F(Tint, NoColorFromTheManagerIsHandedOnAsNil) {
  application(kGlobal);
  static auto none = +[](NSObject*, SEL) -> UIColor* { return nullptr; };
  Class cls = objc_getClass("VNXManager");
  class_replaceMethod(cls, sel_registerName("dye"), reinterpret_cast<IMP>(none), "@@:");
  class_replaceMethod(cls, sel_registerName("statusBarDye"), reinterpret_cast<IMP>(none), "@@:");
  auto* view = make<UIView>("UIView");
  EXPECT_EQ(send(view, UIView::tintColor), nullptr);
  send(view, UIView::setTintColor, rgb(1, 0, 0));
  EXPECT_EQ(stored(view), nullptr);
  EXPECT_EQ(foreground(statusBar(nullptr, rgb(1, 0, 0), nullptr)), "nil");
}

}  // namespace
