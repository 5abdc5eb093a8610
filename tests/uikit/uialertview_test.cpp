// Alerts: their buttons, whom they tell about a click and in which order, and what is refused.
#include "UIKit/UIAlertView.h"

#include <thread>

#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "support/hosted.h"

namespace {

std::vector<std::string> heard;

struct AlertFixtureDelegate : NSObject {
  static void note(const char* what, UIAlertView* alert, NSInteger index) {
    heard.push_back(what + std::to_string(index) +
                    (send<bool>(alert, "isVisible"_sel) ? " shown" : " gone"));
  }
  void willPresent(UIAlertView* alert) { note("willPresent", alert, 0); }
  void didPresent(UIAlertView* alert) { note("didPresent", alert, 0); }
  void clicked(UIAlertView* alert, NSInteger index) { note("clicked", alert, index); }
  void willDismiss(UIAlertView* alert, NSInteger index) { note("willDismiss", alert, index); }
  void didDismiss(UIAlertView* alert, NSInteger index) { note("didDismiss", alert, index); }
  void dealloc() {
    heard.push_back("delegate gone");
    sendSuper<void>(this, "dealloc"_sel);
  }
};

}  // namespace

OBJC_CLASS(
    AlertFixtureDelegate, NSObject,
    objc::Method<"willPresentAlertView:", &AlertFixtureDelegate::willPresent>,
    objc::Method<"didPresentAlertView:", &AlertFixtureDelegate::didPresent>,
    objc::Method<"alertView:clickedButtonAtIndex:", &AlertFixtureDelegate::clicked>,
    objc::Method<"alertView:willDismissWithButtonIndex:", &AlertFixtureDelegate::willDismiss>,
    objc::Method<"alertView:didDismissWithButtonIndex:", &AlertFixtureDelegate::didDismiss>,
    objc::Method<"dealloc", &AlertFixtureDelegate::dealloc>)

namespace {

class UIAlertViewTest : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }
  template <class... A>
  static UIAlertView* make(NSObject* delegate, NSString* cancel, NSString* other, A... more) {
    return static_cast<UIAlertView*>(
        objc_autorelease(send(objc::alloc<UIAlertView>(), UIAlertView::initWithTitle, "Title"_ns,
                              "Message"_ns, delegate, cancel, other, more...)));
  }
  static std::string buttons(UIAlertView* alert) {
    std::string all;
    for (NSInteger i = 0; i < send<NSInteger>(alert, "numberOfButtons"_sel); ++i)
      all += std::string(host::text(send<NSString*>(alert, "buttonTitleAtIndex:"_sel, i))) + "|";
    return all + std::to_string(send<NSInteger>(alert, "cancelButtonIndex"_sel)) + "," +
           std::to_string(send<NSInteger>(alert, "firstOtherButtonIndex"_sel));
  }
  static constexpr NSString* kEnd = nullptr;

 private:
  objc::AutoreleasePool pool_;
};

TEST_F(UIAlertViewTest, TakesAnyNumberOfButtons) {
  EXPECT_EQ(buttons(make(nullptr, nullptr, nullptr)), "-1,-1");
  EXPECT_EQ(buttons(make(nullptr, "No"_ns, nullptr)), "No|0,-1");
  EXPECT_EQ(buttons(make(nullptr, "No"_ns, "a"_ns, kEnd)), "No|a|0,1");
  EXPECT_EQ(buttons(make(nullptr, "No"_ns, "a"_ns, "b"_ns, "c"_ns, "d"_ns, "e"_ns, kEnd)),
            "No|a|b|c|d|e|0,1");
  UIAlertView* alert = make(nullptr, nullptr, "a"_ns, kEnd);
  EXPECT_EQ(send(alert, UIAlertView::addButtonWithTitle, "b"_ns), 1);
  EXPECT_EQ(buttons(alert), "a|b|-1,0");
  EXPECT_EQ(send<NSString*>(alert, "buttonTitleAtIndex:"_sel, NSInteger{2}), nullptr);
}

TEST_F(UIAlertViewTest, TellsItsDelegateInOrder) {
  UIAlertView* alert = make(test::make<NSObject>("AlertFixtureDelegate"), "No"_ns, "Yes"_ns, kEnd);
  send(alert, UIAlertView::show);
  send(alert, UIAlertView::show);
  host::pressAlertButton(alert, 1);
  EXPECT_EQ(heard,
            (std::vector<std::string>{"willPresent0 gone", "didPresent0 shown", "clicked1 shown",
                                      "willDismiss1 shown", "didDismiss1 gone"}));
}

TEST_F(UIAlertViewTest, HearsOfNoClickWhenItIsDismissedOtherwise) {
  UIAlertView* alert = make(test::make<NSObject>("AlertFixtureDelegate"), "No"_ns, nullptr);
  send(alert, UIAlertView::show);
  heard.clear();
  for (int i = 0; i < 2; ++i)
    send<void>(alert, "dismissWithClickedButtonIndex:animated:"_sel, NSInteger{0}, false);
  EXPECT_EQ(heard, (std::vector<std::string>{"willDismiss0 shown", "didDismiss0 gone"}));
}

TEST_F(UIAlertViewTest, DoesNotKeepItsDelegate) {
  auto alert = Strong<UIAlertView>();
  {
    const objc::AutoreleasePool pool;
    alert = Strong<UIAlertView>::retain(
        make(test::make<NSObject>("AlertFixtureDelegate"), "No"_ns, nullptr));
  }
  EXPECT_EQ(heard, std::vector<std::string>{"delegate gone"});
}

TEST_F(UIAlertViewTest, RefusesButtonsThatAreNotOnScreen) {
  UIAlertView* alert = make(nullptr, "No"_ns, nullptr);
  EXPECT_THROW(host::pressAlertButton(alert, 0), host::runtime::Exception);
  send(alert, UIAlertView::show);
  EXPECT_THROW(host::pressAlertButton(alert, 1), host::runtime::Exception);
  EXPECT_THROW(host::pressAlertButton(alert, -1), host::runtime::Exception);
  host::pressAlertButton(alert, 0);
}

TEST_F(UIAlertViewTest, IsForTheMainThread) {
  UIAlertView* alert = make(nullptr, "No"_ns, nullptr);
  std::thread([alert] {
    EXPECT_THROW(send(alert, UIAlertView::show), host::runtime::Exception);
  }).join();
}

}  // namespace
