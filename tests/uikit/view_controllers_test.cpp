// The stand-in's controllers that present others, and appearance proxies.
#include "support/pane.h"

namespace {

using namespace test;

class ViewControllers : public Pane {
 protected:
  void SetUp() override { start("com.example.app"); }
  static UIViewController* controller(const char* name = "UIViewController") {
    return make<UIViewController>(name);
  }
  static UIViewController* navigation(UIViewController* root) {
    auto* made = send<UIViewController*>(objc_getClass("UINavigationController"), "alloc"_sel);
    send<UIViewController*>(made, "initWithRootViewController:"_sel, root);
    return static_cast<UIViewController*>(objc_autorelease(made));
  }
  static void push(UIViewController* onto, UIViewController* page) {
    send<void>(onto, "pushViewController:animated:"_sel, page, true);
  }
  static NSObject* pop(UIViewController* from) {
    return send<NSObject*>(from, "popViewControllerAnimated:"_sel, true);
  }
  static NSObject* visible(UIViewController* in) {
    return send<NSObject*>(in, "visibleViewController"_sel);
  }
  static NSUInteger count(UIViewController* in) {
    return send(send<NSArray*>(in, "viewControllers"_sel), NSArray::count);
  }
  static NSObject* split(UIViewController* of) {
    return send<NSObject*>(of, "splitViewController"_sel);
  }
  static NSObject* proxy(const char* control, const char* container) {
    return objc::sendVariadic<NSObject*>(objc_getClass(control), "appearanceWhenContainedIn:"_sel,
                                         objc_getClass(container), Class{nullptr});
  }
  static UIView* put(UIView* view, UIView* into) {
    send<void>(into, "addSubview:"_sel, view);
    return view;
  }
  static std::string onTint(NSObject* view) { return hex(send<UIColor*>(view, "onTintColor"_sel)); }
};

TEST_F(ViewControllers, StackPagesAndShowTheTopOne) {
  auto* root = controller();
  auto* page = controller();
  auto* stack = navigation(root);
  EXPECT_EQ(visible(stack), root);
  EXPECT_EQ(pop(stack), nullptr);
  push(stack, page);
  push(stack, page);
  push(stack, nullptr);
  EXPECT_EQ(count(stack), 2U);
  EXPECT_EQ(visible(stack), page);
  EXPECT_EQ(send<NSObject*>(page, "navigationController"_sel), stack);
  EXPECT_EQ(pop(stack), page);
  EXPECT_EQ(visible(stack), root);
  EXPECT_EQ(send<NSObject*>(page, "navigationController"_sel), nullptr);
}

TEST_F(ViewControllers, ShowWhatThePagePresents) {
  auto* root = controller();
  auto* stack = navigation(root);
  auto* sheet = controller();
  send(root, UIViewController::presentViewController, sheet, false, nullptr);
  EXPECT_EQ(visible(stack), sheet);
}

TEST_F(ViewControllers, KnowTheSplitViewTheyAreIn) {
  auto* page = controller();
  auto* stack = navigation(page);
  EXPECT_EQ(split(page), nullptr);
  {
    const objc::AutoreleasePool pool;
    auto* columns = controller("UISplitViewController");
    NSObject* given[] = {string("no controller"), stack};
    send<void>(columns, "setViewControllers:"_sel, NSArray::arrayWithObjects(given, 2));
    EXPECT_EQ(count(columns), 1U);
    EXPECT_EQ(split(page), columns);
    EXPECT_EQ(split(stack), columns);
  }
  EXPECT_EQ(split(page), nullptr);
}

TEST_F(ViewControllers, MakeOneNavigationItem) {
  auto* page = controller();
  EXPECT_NE(send(page, UIViewController::navigationItem), nullptr);
  EXPECT_EQ(send(page, UIViewController::navigationItem),
            send(page, UIViewController::navigationItem));
  EXPECT_NE(send(page, UIViewController::navigationItem),
            send(controller(), UIViewController::navigationItem));
}

TEST_F(ViewControllers, LeaveTheirViewBehind) {
  auto view = Strong<UIView>();
  {
    const objc::AutoreleasePool pool;
    view = Strong<UIView>::retain(send(controller(), UIViewController::view));
  }
  put(make<UIView>("UISwitch"), view);
}

TEST_F(ViewControllers, AnswerTheSameProxyForTheSameContainers) {
  EXPECT_EQ(proxy("UISwitch", "UINavigationBar"), proxy("UISwitch", "UINavigationBar"));
  EXPECT_NE(proxy("UISwitch", "UINavigationBar"), proxy("UISlider", "UINavigationBar"));
  EXPECT_NE(proxy("UISwitch", "UINavigationBar"), proxy("UISwitch", "UITabBar"));
}

TEST_F(ViewControllers, ApplyTheClosestAppearance) {
  send<void>(send<NSObject*>(objc_getClass("UISwitch"), "appearance"_sel), "setOnTintColor:"_sel,
             rgb(0, 1, 0));
  send<void>(proxy("UISwitch", "UINavigationController"), "setOnTintColor:"_sel, rgb(1, 0, 0));
  auto* stack = navigation(controller());
  auto* page = controller();
  auto* box = make<UIView>("UIView");
  auto* inBox = put(make<UIView>("UISwitch"), box);
  EXPECT_EQ(onTint(inBox), "#00ff00ff");
  auto* plain = make<UIView>("UISwitch");
  auto* own = make<UIView>("UISwitch");
  send<void>(own, "setOnTintColor:"_sel, rgb(0, 0, 1));
  auto* panel = make<UIView>("UIView");
  push(stack, page);
  put(panel, send(page, UIViewController::view));
  EXPECT_EQ(onTint(put(plain, panel)), "#ff0000ff");
  EXPECT_EQ(onTint(put(own, panel)), "#0000ffff");
}

TEST_F(ViewControllers, ApplyEveryKindOfAppearance) {
  struct {
    const char *control, *setter, *getter;
  } constexpr kColors[] = {
      {"UISegmentedControl", "setTintColor:", "tintColor"},
      {"UINavigationBar", "setBarTintColor:", "barTintColor"},
      {"UISlider", "setMinimumTrackTintColor:", "minimumTrackTintColor"},
      {"UISlider", "setMaximumTrackTintColor:", "maximumTrackTintColor"},
      {"UISwitch", "setOnTintColor:", "onTintColor"},
  };
  auto* page = make<UIView>("UITabBar");
  for (const auto& color : kColors) {
    objc::sendDynamic<void>(proxy(color.control, "UITabBar"), sel_registerName(color.setter),
                            rgb(1, 0, 0));
    auto* control = put(make<UIView>(color.control), page);
    EXPECT_EQ(hex(objc::sendDynamic<UIColor*>(control, sel_registerName(color.getter))),
              "#ff0000ff")
        << color.control << ' ' << color.setter;
  }
  auto* attributes =
      objc_autorelease(send<NSDictionary*>(NSMutableDictionary::dictionary(), "copy"_sel));
  send<void>(proxy("UINavigationBar", "UITabBar"), "setTitleTextAttributes:"_sel, attributes);
  auto* bar = put(make<UIView>("UINavigationBar"), page);
  EXPECT_EQ(send<NSDictionary*>(bar, "titleTextAttributes"_sel), attributes);
}

TEST_F(ViewControllers, RefuseAnAppearanceThatTheControlsLack) {
  EXPECT_THROW(
      send<void>(proxy("UISwitch", "UINavigationBar"), "setBarTintColor:"_sel, rgb(1, 0, 0)),
      host::runtime::Exception);
}

}  // namespace
