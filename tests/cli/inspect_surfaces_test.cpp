// varnix inspect: the surfaces of SpringBoard and of single applications.
#include "cli/command.h"

using test::answer;
using test::Json;

namespace {

constexpr char kDye[] = "#1e88e5ff";
constexpr char kOfFolders[] = "#1e88e599";

struct Expected {
  const char* className;
  const char* property;
  const char* situation;
  Json before;
  Json after;
};

class Surfaces : public test::CommandTest {
 protected:
  void SetUp() override { settings("<key>global_color</key><string>#1e88e5</string>"); }

  /// The surfaces that this process has and others do not, in order.
  static void expectOwn(const std::string& bundle, const std::vector<Expected>& own) {
    const Json report = inspect({"--bundle", bundle});
    const Json common = inspectApplication();
    std::vector<Json> rest;
    for (const Json& surface : report["surfaces"]) {
      const std::string situation = surface["case"];
      if (answer(common, surface["class"], surface["property"], situation) == "absent")
        rest.push_back(surface);
    }
    ASSERT_EQ(rest.size(), own.size());
    for (std::size_t i = 0; i < own.size(); ++i) {
      EXPECT_EQ(rest[i], Json({{"class", own[i].className},
                               {"property", own[i].property},
                               {"case", own[i].situation},
                               {"before", own[i].before},
                               {"after", own[i].after}}));
    }
  }
};

TEST_F(Surfaces, OfSpringBoard) {
  expectOwn(
      "com.apple.springboard",
      {{"SBControlCenterContentContainerView", "colorTint", "presented", nullptr, kDye},
       {"SBNotificationCenterViewController", "colorTint", "presented", nullptr, kDye},
       {"SBFolderIconBackgroundView", "wallpaperColor", "set to grey", "#808080ff", kOfFolders},
       {"SBIconBlurryBackgroundView", "wallpaperColor", "set to grey", "#808080ff", kOfFolders},
       {"SBIconBlurryBackgroundView", "fallbackColor", "set to grey", "#808080ff", kOfFolders},
       {"SBIconBadgeView", "_checkoutBackgroundImage", "badge", "#ff3b30ff", kDye},
       {"SBHUDView", "colorTint", "after layout", nullptr, kDye}});
}

TEST_F(Surfaces, OfMessages) {
  expectOwn("com.apple.MobileSMS",
            {{"CKGradientView", "colors", "balloon, first colour", "#5ac8faff", "#0068c3ff"},
             {"CKGradientView", "colors", "balloon, last colour", "#007affff", "#0055a0ff"}});
}

TEST_F(Surfaces, OfInstagram) {
  expectOwn("com.burbn.instagram",
            {{"IGStringStyle", "linkColor", "link", "#125688ff", kDye},
             {"IGStringStyle", "linkColor", "set to red", "#ff0000ff", kDye}});
}

TEST_F(Surfaces, OfTwitter) {
  const char* text = "colour of text";
  expectOwn("com.atebits.Tweetie2",
            {{"UIColor", "twitterColorTextLink", text, "#55aceeff", kDye},
             {"UIColor", "twitterColorTextUsername", text, "#292f33ff", kDye},
             {"UIColor", "twitterColorTextTimestamp", text, "#8899a6ff", kDye},
             {"UIColor", "twitterColorTextSocial", text, "#8899a6ff", kDye},
             {"UIColor", "twitterColorTextLinkSubtle", text, "#8899a6ff", kDye},
             {"UIColor", "twitterColorActivityTitle", text, "#292f33ff", kDye},
             {"UIColor", "twitterColorChangeTrendsLocationText", text, "#55aceeff", kDye}});
}

TEST_F(Surfaces, SpringBoardListsTheWholeTable) {
  const Json report = inspect({"--bundle", "com.apple.springboard"});
  EXPECT_EQ(report["kind"], "springboard");
  ASSERT_EQ(report["installed"].size(), 39U);
  EXPECT_EQ(report["installed"][21], Json({{"op", "add"},
                                           {"class", "SBControlCenterContentContainerView"},
                                           {"selector", "colorBackdrop"},
                                           {"types", "v@:"}}));
  EXPECT_EQ(report["installed"][37], Json({{"op", "hook"},
                                           {"class", "SBIconBadgeView"},
                                           {"selector", "_checkoutBackgroundImage"},
                                           {"method", "class"}}));
  EXPECT_EQ(report["installed"][38]["class"], "SBHUDView");
}

// Hides the stand-in's classes one at a time: the others still answer.
TEST_F(Surfaces, AnyOfSpringBoardsClassesMayBeHidden) {
  for (const char* name :
       {"SBControlCenterContentContainerView", "SBNotificationCenterViewController",
        "SBFolderIconBackgroundView", "SBIconBlurryBackgroundView", "SBIconBadgeView",
        "SBIconAccessoryImage", "SBHUDView", "MPUNowPlayingController"}) {
    const Json report = inspect({"--bundle", "com.apple.springboard", "--without", name});
    EXPECT_EQ(answer(report, "UIView", "tintColor", "view"), kDye) << name;
    EXPECT_EQ(answer(report, name, "colorTint", "presented"), "absent") << name;
  }
}

}  // namespace
