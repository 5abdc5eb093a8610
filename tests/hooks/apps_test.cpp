// Balloons of Messages, links of Instagram, text colours of the Twitter client.
#include "platform/ChatKit.h"
#include "runtime/instance_variable.h"
#include "support/springboard.h"

namespace {

using namespace test;
using Lines = std::vector<std::string>;

const std::string kGlobal = stringEntry("global_color", "#336699");
const std::string kOwn = stringEntry("sms_color", "#804020");
/// Computed by hand: 15 and 30 per cent more saturated and less bright.
const Lines kShadesOfGlobal = {"#1e5082ff", "#0e3d6bff"};
const Lines kShadesOfOwn = {"#6d2e0fff", "#5a1f02ff"};
const Lines kPlatforms = {"#5ac8faff", "#007affff"};

class Apps : public test::SpringBoard {
 protected:
  void messages(const std::string& entries) {
    settings(entries);
    start("com.apple.MobileSMS");
    load();
  }
  static Lines balloon() {
    auto gradient = framed("CKGradientView");
    auto* colors = send<NSArray*>(gradient, "colors"_sel);
    Lines lines;
    for (NSUInteger i = 0; i < send(colors, NSArray::count); ++i)
      lines.push_back(hex(static_cast<UIColor*>(send(colors, NSArray::objectAtIndex, i))));
    return lines;
  }
  static void answerNil(const char* selector) {
    static auto none = +[](NSObject*, SEL) -> UIColor* { return nullptr; };
    class_replaceMethod(objc_getClass("VNXManager"), sel_registerName(selector),
                        reinterpret_cast<IMP>(none), "@@:");
  }
};

TEST_F(Apps, BalloonsFollowTheDyeForTypeZero) {
  messages(kGlobal + kOwn + integerEntry("sms_color_type", 0));
  EXPECT_EQ(balloon(), kShadesOfGlobal);
}

TEST_F(Apps, BalloonsFollowTheDyeWhereNothingIsStored) {
  messages(kGlobal);
  EXPECT_EQ(balloon(), kShadesOfGlobal);
}

TEST_F(Apps, BalloonsTakeTheirOwnColorForTypeTwo) {
  messages(kGlobal + kOwn + integerEntry("sms_color_type", 2));
  EXPECT_EQ(balloon(), kShadesOfOwn);
}

TEST_F(Apps, BalloonsKeepThePlatformsForEveryOtherType) {
  messages("");
  for (int type : {1, 3, 7, -1}) {
    settingsNow(kGlobal + kOwn + integerEntry("sms_color_type", type));
    EXPECT_EQ(balloon(), kPlatforms) << type;
  }
}

TEST_F(Apps, BalloonsFollowTheSettingsAtTheNextQuestion) {
  messages(kGlobal);
  EXPECT_EQ(balloon(), kShadesOfGlobal);
  settingsNow(kOwn + integerEntry("sms_color_type", 2));
  EXPECT_EQ(balloon(), kShadesOfOwn);
}

// An array of another length, which another version of the platform might have.
NSArray* threeReds(CKGradientView*, SEL) {
  calls().emplace_back("colors");
  NSObject* reds[] = {rgb(1, 0, 0), rgb(1, 0, 0), rgb(1, 0, 0)};
  return NSArray::arrayWithObjects(reds, 3);
}

TEST_F(Apps, BalloonsAskThePlatformFirstAndTheManagerAnewEachTime) {
  settings(kGlobal + kOwn);
  start("com.apple.MobileSMS");
  class_replaceMethod(objc_getClass("CKGradientView"), "colors"_sel,
                      reinterpret_cast<IMP>(&threeReds), "@@:");
  load();
  Class managerClass = objc_getClass("VNXManager");
  Recorded<"smsEnabled", NSInteger()>::install(managerClass);
  Recorded<"smsDye", UIColor*()>::install(managerClass);
  // The colour asks about the type itself.
  EXPECT_EQ(balloon(), kShadesOfGlobal);
  EXPECT_EQ(calls(), (Lines{"colors", "smsEnabled", "smsEnabled", "smsDye", "smsEnabled", "smsDye",
                            "smsEnabled"}));
  settingsNow(kOwn + integerEntry("sms_color_type", 2));
  calls().clear();
  EXPECT_EQ(balloon(), kShadesOfOwn);
  EXPECT_EQ(calls(),
            (Lines{"colors", "smsEnabled", "smsDye", "smsEnabled", "smsDye", "smsEnabled"}));
  settingsNow(kOwn + integerEntry("sms_color_type", 1));
  calls().clear();
  EXPECT_EQ(balloon(), Lines(3, "#ff0000ff"));
  EXPECT_EQ(calls(), (Lines{"colors", "smsEnabled", "smsEnabled"}));
}

class Instagram : public Apps {
 protected:
  void instagram(const std::string& entries) {
    settings(entries);
    start("com.burbn.instagram");
    Class style = objc_getClass("IGStringStyle");
    Recorded<"linkColor", UIColor*()>::install(style);
    load();
  }
  static std::string link(NSObject* style) { return hex(send<UIColor*>(style, "linkColor"_sel)); }
  static std::string stored(NSObject* style) {
    return hex(objc::instanceVariable<UIColor>(style, "_linkColor"));
  }
};

TEST_F(Instagram, LinksCarryTheDyeWhateverIsSet) {
  instagram(kGlobal);
  auto* style = make<NSObject>("IGStringStyle");
  EXPECT_EQ(link(style), "#336699ff");
  send<void>(style, "setLinkColor:"_sel, rgb(1, 0, 0));
  EXPECT_EQ(link(style), "#336699ff");
  EXPECT_EQ(calls(), Lines());
}

TEST_F(Instagram, ASetterStoresTheDye) {
  instagram(kGlobal);
  auto* style = make<NSObject>("IGStringStyle");
  EXPECT_EQ(stored(style), "#125688ff");
  send<void>(style, "setLinkColor:"_sel, rgb(1, 0, 0));
  EXPECT_EQ(stored(style), "#336699ff");
  settingsNow(stringEntry("global_color", "#804020"));
  EXPECT_EQ(stored(style), "#336699ff");
  send<void>(style, "setLinkColor:"_sel, static_cast<UIColor*>(nullptr));
  EXPECT_EQ(stored(style), "#804020ff");
}

TEST_F(Instagram, NoColorTypeIsAsked) {
  std::string entries = kGlobal;
  for (const char* element : {"statusbar", "folder", "cc", "nc", "sms", "keyboard", "volume"})
    entries += integerEntry(std::string(element) + "_color_type", 1);
  instagram(entries);
  EXPECT_EQ(link(make<NSObject>("IGStringStyle")), "#336699ff");
}

TEST_F(Instagram, NoDyeIsHandedOnAsNil) {
  instagram(kGlobal);
  answerNil("dye");
  auto* style = make<NSObject>("IGStringStyle");
  EXPECT_EQ(link(style), "nil");
  send<void>(style, "setLinkColor:"_sel, rgb(1, 0, 0));
  EXPECT_EQ(stored(style), "nil");
}

TEST_F(Instagram, AnExcludedApplicationKeepsItsLinks) {
  instagram(kGlobal + boolEntry("com.burbn.instagram_enabled", false));
  auto* style = make<NSObject>("IGStringStyle");
  EXPECT_EQ(link(style), "#125688ff");
  send<void>(style, "setLinkColor:"_sel, rgb(1, 0, 0));
  EXPECT_EQ(link(style), "#ff0000ff");
}

constexpr std::pair<const char*, const char*> kTexts[] = {
    {"twitterColorTextLink", "#55aceeff"},
    {"twitterColorTextUsername", "#292f33ff"},
    {"twitterColorTextTimestamp", "#8899a6ff"},
    {"twitterColorTextSocial", "#8899a6ff"},
    {"twitterColorTextLinkSubtle", "#8899a6ff"},
    {"twitterColorActivityTitle", "#292f33ff"},
    {"twitterColorChangeTrendsLocationText", "#55aceeff"}};

class Twitter : public Apps {
 protected:
  static std::string text(const char* selector) {
    return hex(objc::sendDynamic<UIColor*>(objc_getClass("UIColor"), sel_registerName(selector)));
  }
};

int platformAsked = 0;
UIColor* askPlatform(Class, SEL) {
  ++platformAsked;
  return nullptr;
}

TEST_F(Twitter, SevenTextsCarryTheDyeAndThePlatformIsNotAsked) {
  settings(kGlobal + integerEntry("sms_color_type", 1));
  start("com.atebits.Tweetie2");
  for (const auto& [selector, own] : kTexts) {
    EXPECT_EQ(text(selector), own);
    class_replaceMethod(objc_getMetaClass("UIColor"), sel_registerName(selector),
                        reinterpret_cast<IMP>(&askPlatform), "@@:");
  }
  load();
  for (const auto& [selector, own] : kTexts) EXPECT_EQ(text(selector), "#336699ff") << selector;
  EXPECT_EQ(platformAsked, 0);
  settingsNow(stringEntry("global_color", "#804020"));
  for (const auto& [selector, own] : kTexts) EXPECT_EQ(text(selector), "#804020ff") << selector;
  answerNil("dye");
  for (const auto& [selector, own] : kTexts) EXPECT_EQ(text(selector), "nil") << selector;
}

TEST_F(Twitter, AnExcludedApplicationKeepsItsTexts) {
  settings(kGlobal + boolEntry("com.atebits.Tweetie2_enabled", false));
  start("com.atebits.Tweetie2");
  load();
  for (const auto& [selector, own] : kTexts) EXPECT_EQ(text(selector), own);
}

}  // namespace
