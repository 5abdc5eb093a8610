// The follow invitation: its alerts, accounts and requests, and what keeps what alive.
#include <atomic>

#include "support/follow.h"
#include "support/loopback.h"

namespace {

using test::Follow;
using test::Lines;
using test::words;

constexpr const char* kInvitation =
    "Hey there! Thanks for installing my tweak! If you'd like to follow me on Twitter for more "
    "updates, tweak giveaways and other cool stuff, hit the button below!";
const Lines kThanksForOne = {"Done <3", "Awesome. Thanks for following me ^-^", "0",
                             "You're welcome <3"};
const Lines kThanksForChosen = {
    "Done <3",
    "Just moving around a few things aaaaaand..... hah! Just kidding. Thanks for following me. "
    "Enjoy the tweak! :)",
    "0", "Will do!"};
constexpr const char* kChooser =
    "Looks like you have multiple Twitter accounts on this device. Which one would you like to "
    "use?";

std::atomic<int> handlersGone;
constinit objc::Hook<NSObject::dealloc> handlerDealloc;
void countHandler(NSObject* self, SEL command) {
  ++handlersGone;
  handlerDealloc.original(self, command);
}

class PanesupportFollow : public Follow {
 protected:
  /// Invites the user to follow "maker", on a device with those accounts.
  void invite(const Lines& accounts, bool granted = true) {
    settingsApplication();
    watchHandlers();
    host::setAccounts("com.apple.twitter"_ns, test::strings(accounts));
    host::setAccounts("com.apple.facebook"_ns, test::strings({"another network's"}));
    host::setAccountAccess(granted);
    const objc::AutoreleasePool pool;
    show("Hi"_ns, "Follow?"_ns, test::string("maker"));
  }
  static void watchHandlers() {
    handlerDealloc.install<&countHandler>(objc_getClass("QKWelcomeTwitterHandler"),
                                          NSObject::dealloc);
  }
  /// Also presses the button that accepts.
  void agree(const Lines& accounts, bool granted = true) {
    invite(accounts, granted);
    pressInPool(1);
  }
  static void pressInPool(NSInteger index) {
    const objc::AutoreleasePool pool;
    press(index);
  }
  static bool anAlertAppears() {
    return test::eventually([] { return alertCount() > 0; });
  }
  static bool handlerGoes() {
    return test::eventually([] { return handlersGone == 1; });
  }
  static bool chooserAppears(const Lines& names) {
    if (!anAlertAppears()) return false;
    Lines expected = {"nil", kChooser, "2", "All!"};
    expected.insert(expected.end(), names.begin(), names.end());
    EXPECT_EQ(texts(alert()), expected);
    EXPECT_EQ(send<NSInteger>(alert(), "cancelButtonIndex"_sel), 0);
    return true;
  }
};

TEST_F(PanesupportFollow, InvitesWithTheGivenTexts) {
  settingsApplication();
  show("A title"_ns, "A message"_ns, "maker"_ns);
  ASSERT_EQ(alertCount(), 1U);
  EXPECT_EQ(texts(alert()), (Lines{"A title", "A message", "1", "No thanks!", "I'd love to!"}));
  EXPECT_EQ(send<NSInteger>(alert(), "cancelButtonIndex"_sel), 0);
  EXPECT_EQ(send<NSInteger>(alert(), "firstOtherButtonIndex"_sel), 1);
  auto* delegate = send<NSObject*>(alert(), "delegate"_sel);
  ASSERT_NE(delegate, nullptr);
  EXPECT_STREQ(class_getName(delegate->isa), "QKWelcomeTwitterHandler");
  EXPECT_EQ(test::answer(delegate, "username"_sel), "maker");
}

TEST_F(PanesupportFollow, HasAnInvitationOfItsOwnForANilMessage) {
  settingsApplication();
  show("A title"_ns, nullptr, "maker"_ns);
  EXPECT_EQ(texts(alert()), (Lines{"A title", kInvitation, "1", "No thanks!", "I'd love to!"}));
}

// An empty message is still a message.
TEST_F(PanesupportFollow, ShowsAnEmptyMessageAndNoTitle) {
  settingsApplication();
  show(nullptr, ""_ns, nullptr);
  EXPECT_EQ(texts(alert()), (Lines{"nil", "", "1", "No thanks!", "I'd love to!"}));
}

TEST_F(PanesupportFollow, InvitesAtEveryCall) {
  settingsApplication();
  show("One"_ns, nullptr, "maker"_ns);
  show("Two"_ns, nullptr, "maker"_ns);
  ASSERT_EQ(alertCount(), 2U);
  EXPECT_EQ(texts(alert())[0], "Two");
}

TEST_F(PanesupportFollow, AsksForNothingAfterNoThanks) {
  invite({"first"});
  EXPECT_EQ(handlersGone, 0);
  pressInPool(0);
  EXPECT_EQ(handlersGone, 1);
  host::MainRunLoop::instance().drain();
  EXPECT_EQ(host::accountAccessRequests(), 0U);
  EXPECT_EQ(requests(), Lines());
  EXPECT_EQ(opened(), Lines());
  EXPECT_EQ(alertCount(), 0U);
}

TEST_F(PanesupportFollow, StopsWhereAccessIsRefused) {
  agree({"first"}, false);
  ASSERT_TRUE(handlerGoes());
  host::MainRunLoop::instance().drain();
  EXPECT_EQ(host::accountAccessRequests(), 1U);
  EXPECT_EQ(requests(), Lines());
  EXPECT_EQ(opened(), Lines());
  EXPECT_EQ(alertCount(), 0U);
}

TEST_F(PanesupportFollow, FollowsWithTheOnlyAccount) {
  agree({"first"});
  ASSERT_TRUE(anAlertAppears());
  EXPECT_EQ(requests(), Lines({follows("first")}));
  EXPECT_EQ(alertCount(), 1U);
  EXPECT_EQ(texts(alert()), kThanksForOne);
  EXPECT_EQ(send<NSObject*>(alert(), "delegate"_sel), nullptr);
  EXPECT_TRUE(handlerGoes());
  pressInPool(0);
  EXPECT_EQ(alertCount(), 0U);
}

TEST_F(PanesupportFollow, FollowsWithAllOfThree) {
  agree({"first", "second", "third"});
  ASSERT_TRUE(chooserAppears({"first", "second", "third"}));
  EXPECT_EQ(requests(), Lines());
  pressInPool(0);
  EXPECT_EQ(requests(), Lines({follows("first"), follows("second"), follows("third")}));
  ASSERT_EQ(alertCount(), 1U);
  EXPECT_EQ(texts(alert()), kThanksForChosen);
  EXPECT_EQ(send<NSObject*>(alert(), "delegate"_sel), nullptr);
  EXPECT_TRUE(handlerGoes());
}

TEST_F(PanesupportFollow, FollowsWithTheSecondOfThree) {
  agree({"first", "second", "third"});
  ASSERT_TRUE(chooserAppears({"first", "second", "third"}));
  pressInPool(2);
  EXPECT_EQ(requests(), Lines({follows("second")}));
  EXPECT_EQ(texts(alert()), kThanksForChosen);
}

TEST_F(PanesupportFollow, FollowsWithTheFirstOrLastOfTwo) {
  agree({"first", "second"});
  ASSERT_TRUE(chooserAppears({"first", "second"}));
  auto* chooser = Strong<UIAlertView>::retain(alert()).autorelease();
  auto* handler = send<NSObject*>(chooser, "delegate"_sel);
  for (NSInteger button : {1, 2})
    send<void>(handler, "alertView:clickedButtonAtIndex:"_sel, chooser, button);
  EXPECT_EQ(requests(), Lines({follows("first"), follows("second")}));
}

TEST_F(PanesupportFollow, IgnoresButtonsThatAreNotThere) {
  agree({"first", "second"});
  ASSERT_TRUE(chooserAppears({"first", "second"}));
  auto* chooser = Strong<UIAlertView>::retain(alert()).autorelease();
  auto* handler = send<NSObject*>(chooser, "delegate"_sel);
  for (NSInteger button : {-1L, 3L, 1000000L})
    send<void>(handler, "alertView:clickedButtonAtIndex:"_sel, chooser, button);
  send(chooser, UIAlertView::setTag, 3);
  send<void>(handler, "alertView:clickedButtonAtIndex:"_sel, chooser, NSInteger{0});
  send<void>(handler, "alertView:clickedButtonAtIndex:"_sel, static_cast<UIAlertView*>(nullptr),
             NSInteger{0});
  EXPECT_EQ(requests(), Lines());
  EXPECT_EQ(alertCount(), 1U);
}

TEST_F(PanesupportFollow, TheChooserHoldsItsDelegateAndTheAccounts) {
  agree({"first", "second"});
  ASSERT_TRUE(chooserAppears({"first", "second"}));
  EXPECT_EQ(handlersGone, 0);
  {
    const objc::AutoreleasePool pool;
    send<void>(alert(), "dismissWithClickedButtonIndex:animated:"_sel, NSInteger{0}, true);
  }
  EXPECT_TRUE(handlerGoes());
  EXPECT_EQ(requests(), Lines());
}

bool opensOnMainThread = true;
constinit objc::Hook<UIApplication::openURL> openURL;
bool noteThread(UIApplication* self, SEL command, NSURL* url) {
  opensOnMainThread = NSThread::isMainThread();
  return openURL.original(self, command, url);
}

TEST_F(PanesupportFollow, OpensTheProfileWhereThereIsNoAccount) {
  invite({});
  host::setInstalledURLSchemes(test::strings({"twitter"}));
  openURL.install<&noteThread>(objc_getClass("UIApplication"), UIApplication::openURL);
  pressInPool(1);
  ASSERT_TRUE(handlerGoes());
  EXPECT_EQ(opened(), Lines({"twitter://user?screen_name=maker"}));
  EXPECT_FALSE(opensOnMainThread);
  EXPECT_EQ(requests(), Lines());
  EXPECT_EQ(alertCount(), 0U);
}

TEST_F(PanesupportFollow, OpensTheWebWhereThereIsNoClientEither) {
  agree({});
  ASSERT_TRUE(handlerGoes());
  EXPECT_EQ(opened(), Lines({"https://twitter.com/maker"}));
}

TEST_F(PanesupportFollow, FollowsNobodyWithoutAName) {
  settingsApplication();
  auto* handler = test::make<NSObject>("QKWelcomeTwitterHandler");
  send<void>(handler, "followWithAccount:"_sel, static_cast<ACAccount*>(nullptr));
  EXPECT_EQ(requests(),
            Lines({"nil: com.apple.social.twitter 1 "
                   "https://api.twitter.com/1.1/friendships/create.json screen_name=nil "
                   "follow=FALSE of 1"}));
}

// An application other than Settings has neither framework until the helper loads them.
TEST_F(PanesupportFollow, LoadsItsFrameworksWhenItNeedsThem) {
  installFramework("Accounts");
  installFramework("Social");
  start("com.example.app");
  load();
  ASSERT_EQ(objc_getClass("ACAccountStore"), nullptr);
  show("Hi"_ns, nullptr, "maker"_ns);
  press(1);
  ASSERT_TRUE(test::eventually([] { return !opened().empty(); }));
  EXPECT_EQ(objc_getClass("SLRequest"), nullptr);
  host::setAccounts("com.apple.twitter"_ns, test::strings({"first"}));
  show("Hi"_ns, nullptr, "maker"_ns);
  press(1);
  ASSERT_TRUE(anAlertAppears());
  EXPECT_EQ(requests(), Lines({follows("first")}));
  EXPECT_EQ(texts(alert()), kThanksForOne);
}

TEST_F(PanesupportFollow, EndsQuietlyWithoutTheFrameworks) {
  start("com.example.app");
  load();
  watchHandlers();
  {
    const objc::AutoreleasePool pool;
    show("Hi"_ns, nullptr, "maker"_ns);
    press(1);
  }
  EXPECT_EQ(handlersGone, 1);
  EXPECT_EQ(alertCount(), 0U);
  EXPECT_EQ(opened(), Lines());
}

TEST_F(PanesupportFollow, DoesNothingInAProcessWithoutAlerts) {
  start("com.example.daemon", host::ProcessKind::daemon);
  load();
  watchHandlers();
  show("Hi"_ns, nullptr, "maker"_ns);
  openUsername("maker"_ns);
  EXPECT_EQ(handlersGone, 1);
}

TEST_F(PanesupportFollow, SendsTheRequestToTheServer) {
  test::LoopbackServer server("HTTP/1.0 200 OK\r\n\r\n{}");
  setenv("VARNIX_SOCIAL_HOST", server.address().c_str(), 1);
  agree({"first"});
  const std::string received = server.received();
  EXPECT_TRUE(received.starts_with("POST /1.1/friendships/create.json HTTP/1.1\r\n")) << received;
  EXPECT_NE(received.find("\r\nHost: api.twitter.com\r\n"), std::string::npos) << received;
  EXPECT_NE(received.find("\r\nAuthorization: OAuth oauth_token=\"first\"\r\n"), std::string::npos)
      << received;
  EXPECT_TRUE(received.ends_with("\r\n\r\nfollow=FALSE&screen_name=maker")) << received;
  EXPECT_TRUE(anAlertAppears());
}

// The user is thanked, whatever the server answers.
TEST_F(PanesupportFollow, LooksAtNoOutcome) {
  test::LoopbackServer server("HTTP/1.0 500 Broken\r\n\r\n");
  setenv("VARNIX_SOCIAL_HOST", server.address().c_str(), 1);
  agree({"first"});
  EXPECT_FALSE(server.received().empty());
  ASSERT_TRUE(anAlertAppears());
  EXPECT_EQ(texts(alert()), kThanksForOne);
}

}  // namespace
