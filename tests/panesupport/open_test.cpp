// Which client opens a profile, and the URL that it gets.
#include "support/follow.h"

namespace {

using test::Follow;
using test::Lines;

const Lines kClients = {"tweetbot", "twitterrific", "tweetings", "twitter"};

class PanesupportOpen : public Follow {
 protected:
  Lines openWith(const Lines& schemes, NSString* name = "maker_1"_ns) {
    settingsApplication();
    host::setInstalledURLSchemes(test::strings(schemes));
    openUsername(name);
    return opened();
  }
};

TEST_F(PanesupportOpen, PrefersTheFirstClient) {
  EXPECT_EQ(openWith(kClients), Lines({"tweetbot:///user_profile/maker_1"}));
}

TEST_F(PanesupportOpen, TakesTheSecondWithoutTheFirst) {
  EXPECT_EQ(openWith({"twitter", "tweetings", "twitterrific"}),
            Lines({"twitterrific:///profile?screen_name=maker_1"}));
}

TEST_F(PanesupportOpen, TakesTheThirdWithoutTheFirstTwo) {
  EXPECT_EQ(openWith({"twitter", "tweetings"}), Lines({"tweetings:///user?screen_name=maker_1"}));
}

TEST_F(PanesupportOpen, TakesTheNetworksOwnClientLast) {
  EXPECT_EQ(openWith({"twitter"}), Lines({"twitter://user?screen_name=maker_1"}));
}

TEST_F(PanesupportOpen, OpensTheWebWithoutAnyClient) {
  EXPECT_EQ(openWith({"another"}), Lines({"https://twitter.com/maker_1"}));
}

TEST_F(PanesupportOpen, EscapesNothing) {
  EXPECT_EQ(openWith({"tweetings"}, "a%20b&c=d?e#f"_ns),
            Lines({"tweetings:///user?screen_name=a%20b&c=d?e#f"}));
}

TEST_F(PanesupportOpen, OpensAnEmptyName) {
  EXPECT_EQ(openWith({}, ""_ns), Lines({"https://twitter.com/"}));
}

// The client is installed, so nothing else is tried.
TEST_F(PanesupportOpen, OpensNothingForANameThatNoUrlCanHold) {
  EXPECT_EQ(openWith({"tweetbot"}, "two words"_ns), Lines());
  openUsername(test::string("n\u00e4me"));
  openUsername("50%"_ns);
  openUsername("%@%n%s"_ns);
  EXPECT_EQ(opened(), Lines());
}

TEST_F(PanesupportOpen, OpensNothingForNil) { EXPECT_EQ(openWith({"tweetbot"}, nullptr), Lines()); }

Lines asked;
constinit objc::Hook<UIApplication::canOpenURL> canOpenURL;
bool noteQuestion(UIApplication* self, SEL command, NSURL* url) {
  asked.push_back(test::words(url));
  return canOpenURL.original(self, command, url);
}

TEST_F(PanesupportOpen, AsksForBareSchemesInOrder) {
  settingsApplication();
  canOpenURL.install<&noteQuestion>(objc_getClass("UIApplication"), UIApplication::canOpenURL);
  openUsername("maker"_ns);
  // The last question is the application's own, when it opens the URL.
  EXPECT_EQ(
      asked,
      Lines({"tweetbot:", "twitterrific:", "tweetings:", "twitter:", "https://twitter.com/maker"}));
  asked.clear();
  host::setInstalledURLSchemes(test::strings({"Twitterrific"}));
  openUsername("maker"_ns);
  EXPECT_EQ(asked,
            Lines({"tweetbot:", "twitterrific:", "twitterrific:///profile?screen_name=maker"}));
}

TEST_F(PanesupportOpen, IsRefusedForWhatIsNotInstalled) {
  settingsApplication();
  auto* application = UIApplication::sharedApplication();
  EXPECT_FALSE(send(application, UIApplication::canOpenURL, NSURL::URLWithString("absent:"_ns)));
  EXPECT_FALSE(send(application, UIApplication::openURL, NSURL::URLWithString("absent:thing"_ns)));
  EXPECT_FALSE(send(application, UIApplication::canOpenURL, NSURL::URLWithString("no-scheme"_ns)));
  EXPECT_FALSE(send(application, UIApplication::openURL, nullptr));
  EXPECT_TRUE(
      send(application, UIApplication::openURL, NSURL::URLWithString("HTTPS://example.com"_ns)));
  EXPECT_EQ(opened(), Lines({"HTTPS://example.com"}));
}

}  // namespace
