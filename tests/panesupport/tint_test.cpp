// A settings pane in its own colour, and then in the system's again.
#include "support/pane.h"
#include "varnix/pane.h"

namespace {

using namespace test;

class Tint : public Pane {
 protected:
  void SetUp() override {
    settingsApplication();
    setTint = exported<decltype(QKSetPrefsTint)>("QKSetPrefsTint");
    resetTint = exported<decltype(QKResetPrefsTint)>("QKResetPrefsTint");
    ASSERT_NE(setTint, nullptr);
    ASSERT_NE(resetTint, nullptr);
    pane = newPane("TestPane");
    page = controller("UIViewController");
    master = navigation(controller("UIViewController"));
    detail = navigation(pane);
    push(detail, page);
    show({master, detail});
  }

  static UIViewController* controller(const char* name) { return make<UIViewController>(name); }
  /// Makes a pane with a class of its own.
  static UIViewController* newPane(const char* name) {
    Class cls = objc_allocateClassPair(objc_getClass("UIViewController"), name, 0);
    objc_registerClassPair(cls);
    return controller(name);
  }
  static UIViewController* navigation(UIViewController* root) {
    auto* made = make<UIViewController>("UINavigationController");
    push(made, root);
    return made;
  }
  static void push(UIViewController* onto, UIViewController* page) {
    send<void>(onto, "pushViewController:animated:"_sel, page, false);
  }
  void show(std::vector<NSObject*> columns) {
    split = controller("UISplitViewController");
    send<void>(split, "setViewControllers:"_sel,
               NSArray::arrayWithObjects(columns.data(), columns.size()));
  }
  static UIView* bar(UIViewController* navigation) {
    return send<UIView*>(navigation, "navigationBar"_sel);
  }
  /// The colour of the bar's title if that is its only attribute.
  static std::string title(UIViewController* navigation) {
    auto* attributes = send<NSDictionary*>(bar(navigation), "titleTextAttributes"_sel);
    if (attributes == nullptr) return "system";
    const auto* others = send(attributes, NSDictionary::count) > 1 ? " and others" : "";
    return hex(static_cast<UIColor*>(
               send(attributes, NSDictionary::objectForKey, NSForegroundColorAttributeName))) +
           others;
  }
  static std::string color(NSObject* view, const char* property) {
    return hex(objc::sendDynamic<UIColor*>(view, sel_registerName(property)));
  }
  static bool autoresizes(UIViewController* of) {
    return send<bool>(send(of, UIViewController::view), "autoresizesSubviews"_sel);
  }
  static UIRectEdge edges(UIViewController* of) {
    return send<UIRectEdge>(of, "edgesForExtendedLayout"_sel);
  }
  /// The value of a new control's property after the control is added to a view.
  static std::string inside(UIView* container, const char* control, const char* property) {
    auto* view = make<UIView>(control);
    send<void>(container, "addSubview:"_sel, view);
    return color(view, property);
  }

  decltype(&QKSetPrefsTint) setTint = nullptr;
  decltype(&QKResetPrefsTint) resetTint = nullptr;
  UIViewController* pane = nullptr;
  UIViewController* page = nullptr;  ///< on screen, above the pane
  UIViewController* master = nullptr;
  UIViewController* detail = nullptr;
  UIViewController* split = nullptr;
};

constexpr const char* kRed = "#ff0000ff";

TEST_F(Tint, DyesTheLastColumnsBarAndItsVisiblePage) {
  send<void>(send(page, UIViewController::view), "setAutoresizesSubviews:"_sel, false);
  setTint(pane, rgb(1, 0, 0));
  EXPECT_EQ(title(detail), kRed);
  EXPECT_EQ(color(bar(detail), "_interactionTintColor"), kRed);
  EXPECT_EQ(color(bar(detail), "barTintColor"), "nil");
  EXPECT_EQ(color(send(page, UIViewController::view), "_interactionTintColor"), kRed);
  EXPECT_TRUE(autoresizes(page));
  EXPECT_EQ(color(send(pane, UIViewController::view), "_interactionTintColor"), "nil");
  EXPECT_EQ(title(master), "system");
  EXPECT_EQ(color(bar(master), "_interactionTintColor"), "nil");
}

TEST_F(Tint, ExtendsThePaneToTheBottomAlone) {
  EXPECT_EQ(edges(pane), 15U);
  setTint(pane, rgb(1, 0, 0));
  EXPECT_EQ(edges(pane), UIRectEdgeBottom);
  EXPECT_EQ(edges(page), 15U);
}

TEST_F(Tint, SparesTheEdgesOfAPaneThatDoesNotAnswerThem) {
  auto* old = newPane("OldPane");
  static const SEL kAsked = sel_registerName("edgesForExtendedLayout");
  class_addMethod(old->isa, sel_registerName("respondsToSelector:"),
                  reinterpret_cast<IMP>(+[](NSObject* self, SEL, SEL asked) {
                    return asked != kAsked && class_respondsToSelector(self->isa, asked);
                  }),
                  "B@::");
  push(detail, old);
  setTint(old, rgb(1, 0, 0));
  EXPECT_EQ(edges(old), 15U);
  EXPECT_EQ(title(detail), kRed);
}

TEST_F(Tint, DyesControlsThatComeIntoAPaneOfTheClass) {
  auto* before = make<UIView>("UISwitch");
  send<void>(send(pane, UIViewController::view), "addSubview:"_sel, before);
  setTint(pane, rgb(1, 0, 0));
  EXPECT_EQ(
      inside(send(pane, UIViewController::view), "UISegmentedControl", "_interactionTintColor"),
      kRed);
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISlider", "maximumTrackTintColor"), kRed);
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISwitch", "onTintColor"), kRed);
  EXPECT_EQ(inside(send(controller("TestPane"), UIViewController::view), "UISwitch", "onTintColor"),
            kRed);

  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISegmentedControl", "backgroundColor"),
            "nil");
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISlider", "minimumTrackTintColor"), "nil");
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISlider", "_interactionTintColor"), "nil");
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISwitch", "tintColor"), "nil");
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UIButton", "_interactionTintColor"), "nil");
  EXPECT_EQ(inside(send(page, UIViewController::view), "UISwitch", "onTintColor"), "nil");
  EXPECT_EQ(color(before, "onTintColor"), "nil");
}

TEST_F(Tint, TellsThePlatformInOrder) {
  static std::vector<std::string> sent;
  auto noted = [](const char* cls, const char* setter) {
    static std::map<std::pair<Class, SEL>, IMP> passOn;
    Class of = objc_getClass(cls);
    SEL selector = sel_registerName(setter);
    IMP noting = reinterpret_cast<IMP>(+[](NSObject* self, SEL command, void* value) {
      sent.push_back(std::string(class_getName(self->isa)) + " " + sel_getName(command));
      for (Class at = self->isa; at != nullptr; at = class_getSuperclass(at)) {
        if (auto found = passOn.find({at, command}); found != passOn.end())
          return reinterpret_cast<void (*)(NSObject*, SEL, void*)>(found->second)(self, command,
                                                                                  value);
      }
    });
    passOn[{of, selector}] =
        method_setImplementation(class_getInstanceMethod(of, selector), noting);
  };
  noted("UIView", "setTintColor:");
  noted("UINavigationBar", "setTitleTextAttributes:");
  noted("UINavigationBar", "setBarTintColor:");
  noted("UIView", "setAutoresizesSubviews:");
  noted("UIViewController", "setEdgesForExtendedLayout:");
  for (const char* setter : {"setTintColor:", "setMaximumTrackTintColor:", "setOnTintColor:"})
    noted("_UIAppearance", setter);

  setTint(pane, rgb(1, 0, 0));
  EXPECT_EQ(sent, (std::vector<std::string>{
                      "UINavigationBar setTitleTextAttributes:", "UINavigationBar setTintColor:",
                      "UIView setTintColor:", "UIView setAutoresizesSubviews:",
                      "TestPane setEdgesForExtendedLayout:", "_UIAppearance setTintColor:",
                      "_UIAppearance setMaximumTrackTintColor:", "_UIAppearance setOnTintColor:"}));
  sent.clear();
  resetTint(pane);
  EXPECT_EQ(sent, (std::vector<std::string>{
                      "UINavigationBar setBarTintColor:", "UINavigationBar setTintColor:",
                      "UINavigationBar setTitleTextAttributes:", "UIView setTintColor:",
                      "UIView setAutoresizesSubviews:"}));
}

TEST_F(Tint, GivesTheBarAndThePageBack) {
  setTint(pane, rgb(1, 0, 0));
  send<void>(bar(detail), "setBarTintColor:"_sel, rgb(0, 1, 0));
  resetTint(pane);
  EXPECT_EQ(title(detail), "#000000ff");
  EXPECT_EQ(color(bar(detail), "_interactionTintColor"), "nil");
  EXPECT_EQ(color(bar(detail), "barTintColor"), "nil");
  EXPECT_EQ(color(send(page, UIViewController::view), "_interactionTintColor"), "nil");
  EXPECT_FALSE(autoresizes(page));
}

TEST_F(Tint, LeavesEdgesAndControlsAsTheyAre) {
  setTint(pane, rgb(1, 0, 0));
  resetTint(pane);
  EXPECT_EQ(edges(pane), UIRectEdgeBottom);
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISwitch", "onTintColor"), kRed);
}

TEST_F(Tint, TakesTheLatestColor) {
  setTint(pane, rgb(1, 0, 0));
  setTint(pane, rgb(0, 0, 1));
  EXPECT_EQ(title(detail), "#0000ffff");
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISlider", "maximumTrackTintColor"),
            "#0000ffff");
}

TEST_F(Tint, WithoutAColorIsTheSystems) {
  setTint(pane, rgb(1, 0, 0));
  setTint(pane, nullptr);
  EXPECT_EQ(title(detail), "nil");
  EXPECT_EQ(color(bar(detail), "_interactionTintColor"), "nil");
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISwitch", "onTintColor"), "nil");
}

TEST_F(Tint, DoesWhatItCanForAPaneInNoSplitView) {
  auto* alone = newPane("LonePane");
  setTint(alone, rgb(1, 0, 0));
  EXPECT_EQ(edges(alone), UIRectEdgeBottom);
  EXPECT_EQ(inside(send(alone, UIViewController::view), "UISwitch", "onTintColor"), kRed);
  resetTint(alone);
  EXPECT_EQ(title(detail), "system");
}

TEST_F(Tint, DoesNothingForNoPane) {
  setTint(nullptr, rgb(1, 0, 0));
  resetTint(nullptr);
  EXPECT_EQ(title(detail), "system");
  EXPECT_EQ(inside(send(pane, UIViewController::view), "UISwitch", "onTintColor"), "nil");
  EXPECT_EQ(inside(make<UIView>("UIView"), "UISwitch", "onTintColor"), "nil");
}

TEST_F(Tint, SurvivesASplitViewWithoutColumnsOrPages) {
  auto* empty = make<UIViewController>("UINavigationController");
  send<void>(split, "setViewControllers:"_sel, NSMutableArray::array());
  setTint(pane, rgb(1, 0, 0));
  resetTint(pane);
  EXPECT_EQ(title(detail), "system");
  show({empty});
  setTint(empty, rgb(1, 0, 0));
  EXPECT_EQ(title(empty), kRed);
  resetTint(empty);
  EXPECT_EQ(title(empty), "#000000ff");
}

}  // namespace
