// The icon's colour as the dye: computed once, kept in the settings, never blocking anything.
#include <plist/plist.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Foundation/darwin_notify.h"
#include "OpenGLES/gl.h"
#include "objc/autorelease_pool.h"
#include "platform/CoreFoundation.h"
#include "support/base64.h"
#include "support/hosted.h"
#include "support/pictures.h"
#include "support/recorded.h"

namespace {

using test::base64;
using test::calls;
using test::hex;
using test::manager;
using test::Recorded;

const std::string kIconType = "<key>global_color_type</key><integer>1</integer>";
const std::string kGlobal = "<key>global_color</key><string>#112233</string>";
constexpr const char* kNotes = VARNIX_SAMPLES "/icons/com.example.notes.png";
constexpr const char* kMail = VARNIX_SAMPLES "/icons/com.example.mail.png";

class IconColor : public test::Hosted {
 protected:
  void appWithIcon(const std::string& entries, const char* icon = kNotes) {
    icons["com.example.app"] = icon;
    application(entries);
  }
  static UIColor* dye() { return send<UIColor*>(manager(), "dye"_sel); }
  static NSString* cacheKey() { return "cached_icon_color_com.example.app"_ns; }

  /// What the file stores under the application's key; nil if nothing.
  NSObject* cachedEntry() {
    auto* file = NSDictionary::dictionaryWithContentsOfFile(
        "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist"_ns);
    return send<NSObject*>(file, "objectForKey:"_sel, cacheKey());
  }
  static std::string unarchived(NSObject* entry) {
    return hex(static_cast<UIColor*>(
        NSKeyedUnarchiver::unarchiveObjectWithData(static_cast<NSData*>(entry))));
  }
  static std::string cacheEntry(const std::string& value) {
    return "<key>cached_icon_color_com.example.app</key>" + value;
  }
};

/// The icon's colour, computed step by step.
std::string expectedColor(const char* file) {
  const std::string bytes = test::contentsOf(file);
  auto image = [](NSData* data) {
    return static_cast<UIImage*>(
        objc_autorelease(send<UIImage*>(objc::alloc<UIImage>(), "initWithData:"_sel, data)));
  };
  UIImage* icon = image(NSData::dataWithBytes(bytes.data(), bytes.size()));
  UIGraphicsBeginImageContextWithOptions({59, 59}, false, 2);
  send(icon, UIImage::drawInRect, {{0, 0}, {59, 59}});
  UIImage* small = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  UIImage* opaque = image(UIImageJPEGRepresentation(small, 1));
  auto* scheme =
      send<NSObject*>(test::make<NSObject>("CQColorPicker"), "colorSchemeFromImage:"_sel, opaque);
  UIColor* best = nullptr;
  double most = -1;
  for (const char* part : {"primaryTextColor", "secondaryTextColor", "backgroundColor"}) {
    auto* color = objc::sendDynamic<UIColor*>(scheme, sel_registerName(part));
    const double saturation = send<CGFloat>(color, "saturation"_sel);
    if (saturation > most) {
      most = saturation;
      best = color;
    }
  }
  if (most > 0.1 && most < 0.63) {
    best = UIColor::colorWithHue(send<CGFloat>(best, "hue"_sel), 0.76,
                                 send<CGFloat>(best, "brightness"_sel), 1);
  }
  return hex(best);
}

TEST_F(IconColor, IsTheDyeWhereItIsWanted) {
  appWithIcon(kIconType + kGlobal);
  const std::string expected = expectedColor(kNotes);
  EXPECT_NE(expected, "#112233ff");
  EXPECT_EQ(hex(dye()), expected);
}

TEST_F(IconColor, DyesViews) {
  appWithIcon(kIconType + kGlobal, kMail);
  EXPECT_EQ(hex(send(test::make<UIView>("UIView"), UIView::tintColor)), expectedColor(kMail));
}

TEST_F(IconColor, IsNotTheDyeForAnyOtherType) {
  appWithIcon("<key>global_color_type</key><integer>2</integer>" + kGlobal);
  EXPECT_EQ(hex(dye()), "#112233ff");
  EXPECT_EQ(cachedEntry(), nullptr);
}

TEST_F(IconColor, IsKeptByTheManager) {
  appWithIcon(kIconType + kGlobal);
  NSObject* kept = manager();
  auto* first = send<UIColor*>(kept, "dye"_sel);
  EXPECT_EQ(send<UIColor*>(kept, "cachedIconColor"_sel), first);
  Recorded<"colorSchemeFromImage:", NSObject*(UIImage*)>::install(objc_getClass("CQColorPicker"));
  EXPECT_EQ(send<UIColor*>(kept, "dye"_sel), first);
  EXPECT_EQ(calls().size(), 0U);
}

TEST_F(IconColor, RunsThePassTwice) {
  appWithIcon(kIconType);
  Recorded<"colorSchemeFromImage:", NSObject*(UIImage*)>::install(objc_getClass("CQColorPicker"));
  dye();
  EXPECT_EQ(calls().size(), 2U);
}

TEST_F(IconColor, IsArchivedIntoTheSettings) {
  appWithIcon(kIconType + kGlobal);
  const std::string color = hex(dye());
  ASSERT_NE(cachedEntry(), nullptr);
  EXPECT_EQ(unarchived(cachedEntry()), color);
  // Everything else is still there.
  auto* file = NSDictionary::dictionaryWithContentsOfFile(
      "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist"_ns);
  EXPECT_STREQ(
      send(static_cast<NSString*>(send(file, NSDictionary::objectForKey, "global_color"_ns)),
           NSString::UTF8String),
      "#112233");
}

std::vector<std::string> heard;
void hear(CFNotificationCenterRef, void*, CFStringRef name, const void*, CFDictionaryRef) {
  heard.emplace_back(send(name, NSString::UTF8String));
}

// Otherwise every dyed process would read its settings again, although none has changed.
TEST_F(IconColor, IsArchivedWithoutAWordToOthers) {
  appWithIcon(kIconType + kGlobal);
  for (NSString* name : {"com.quillmarsh.varnix2.changed"_ns, "com.example.last"_ns}) {
    CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), &heard, &hear,
                                    name, nullptr, CFNotificationSuspensionBehavior::coalesce);
  }
  dye();
  ASSERT_NE(cachedEntry(), nullptr);
  // Notifications arrive in the order in which they were posted.
  host::postDarwinNotification("com.example.last");
  ASSERT_TRUE(test::eventually([] { return !heard.empty(); }));
  EXPECT_EQ(heard, std::vector<std::string>{"com.example.last"});
}

// Nil is an answer: the surface keeps the platform's colour, and does not get the fallback.
TEST_F(IconColor, OfAnIconWithoutColorsIsNilAndNotTheFallback) {
  appWithIcon(kIconType + kGlobal);
  class_replaceMethod(
      objc_getClass("CQColorPicker"), sel_registerName("colorSchemeFromImage:"),
      reinterpret_cast<IMP>(+[](NSObject*, SEL, UIImage*) -> NSObject* { return nullptr; }),
      "@@:@");
  class_replaceMethod(objc_getMetaClass("UIColor"),
                      sel_registerName("colorWithHue:saturation:brightness:alpha:"),
                      reinterpret_cast<IMP>(+[](Class, SEL, CGFloat, CGFloat, CGFloat,
                                                CGFloat) -> UIColor* { return nullptr; }),
                      "@@:dddd");
  EXPECT_EQ(hex(dye()), "nil");
  EXPECT_EQ(cachedEntry(), nullptr);
}

// Somebody else wrote the file after the store had read it, and the notification has not arrived
// yet.
TEST_F(IconColor, IsPutIntoTheFileAsItIsNow) {
  appWithIcon(kIconType + kGlobal);
  NSObject* kept = manager();
  settings(kIconType + "<key>cc_color</key><string>#445566</string>");
  const std::string color = hex(send<UIColor*>(kept, "dye"_sel));
  EXPECT_EQ(unarchived(cachedEntry()), color);
  auto* file = NSDictionary::dictionaryWithContentsOfFile(
      "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist"_ns);
  auto* theirs = static_cast<NSString*>(send(file, NSDictionary::objectForKey, "cc_color"_ns));
  ASSERT_NE(theirs, nullptr);
  EXPECT_STREQ(send(theirs, NSString::UTF8String), "#445566");
  EXPECT_EQ(send(file, NSDictionary::objectForKey, "global_color"_ns), nullptr);
}

// Somebody is still writing it, or was interrupted.
TEST_F(IconColor, IsNotPutIntoAFileThatIsCutShort) {
  appWithIcon(kIconType + kGlobal);
  NSObject* kept = manager();
  const std::string cut = "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>cc_color</key>";
  writeSettings(cut);
  const std::string color = hex(send<UIColor*>(kept, "dye"_sel));
  EXPECT_EQ(test::contentsOf(settingsPath()), cut);
  auto* store = send<NSObject*>(kept, "prefsMan"_sel);
  EXPECT_EQ(unarchived(send<NSObject*>(store, "objectForKey:"_sel,
                                       "cached_icon_color_com.example.app"_ns)),
            color);
}

// An older application list lacks one of these methods, or both.
TEST_F(IconColor, IsTheFallbackWhereTheListCannotTell) {
  for (const char* name : {"+[ALApplicationList sharedApplicationList]",
                           "-[ALApplicationList iconOfSize:forDisplayIdentifier:]"}) {
    SCOPED_TRACE(name);
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
      settings(kIconType + kGlobal);
      icons["com.example.app"] = kNotes;
      start("com.example.app", host::ProcessKind::application, {}, {name});
      load();
      _exit(hex(dye()) == "#112233ff" ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
}

TEST_F(IconColor, IsReadFromTheSettingsWithoutAskingForTheIcon) {
  start("com.example.app");
  NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(test::rgb(0.25, 0.5, 0.75));
  settings(kIconType + cacheEntry("<data>" + base64(archive) + "</data>"));
  load();
  Recorded<"iconOfSize:forDisplayIdentifier:", UIImage*(NSUInteger, NSString*)>::install(
      objc_getClass("ALApplicationList"));
  EXPECT_EQ(hex(dye()), "#4080bfff");
  EXPECT_EQ(calls().size(), 0U);
}

TEST_F(IconColor, WhateverWasArchivedIsReturned) {
  start("com.example.app");
  NSData* archive = NSKeyedArchiver::archivedDataWithRootObject("not a colour"_ns);
  settings(kIconType + cacheEntry("<data>" + base64(archive) + "</data>"));
  load();
  auto* answer = objc::as<NSString>(send<NSObject*>(manager(), "dye"_sel));
  ASSERT_NE(answer, nullptr);
  EXPECT_STREQ(send(answer, NSString::UTF8String), "not a colour");
  // An element passes it on without marking it.
  EXPECT_NE(send<NSObject*>(manager(), "keyboardDye"_sel), nullptr);
}

class BadEntry : public IconColor, public testing::WithParamInterface<const char*> {};

TEST_P(BadEntry, CountsAsNoneAndIsReplaced) {
  appWithIcon(kIconType + kGlobal + cacheEntry(GetParam()));
  const std::string color = hex(dye());
  EXPECT_EQ(color, expectedColor(kNotes));
  EXPECT_EQ(unarchived(cachedEntry()), color);
}

INSTANTIATE_TEST_SUITE_P(Kinds, BadEntry,
                         testing::Values("<string>#ff0000</string>", "<integer>7</integer>",
                                         "<true/>", "<data></data>", "<data>AAAA</data>",
                                         "<data>YnBsaXN0MDA=</data>", "<array/>",
                                         "<dict><key>$top</key><integer>1</integer></dict>"));

TEST_F(IconColor, AnyTruncatedEntryIsReplaced) {
  icons["com.example.app"] = kNotes;
  start("com.example.app");
  NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(test::rgb(0.25, 0.5, 0.75));
  const std::size_t length = send(archive, NSData::length);
  load();
  const std::string expected = expectedColor(kNotes);
  for (std::size_t kept = 0; kept < length; kept += 7) {
    objc::AutoreleasePool pool;
    settings(kIconType +
             cacheEntry("<data>" +
                        base64(NSData::dataWithBytes(send(archive, NSData::bytes), kept)) +
                        "</data>"));
    EXPECT_EQ(hex(dye()), expected) << kept;
    EXPECT_EQ(unarchived(cachedEntry()), expected) << kept;
  }
}

TEST_F(IconColor, WithoutAnIconIsTheFallback) {
  application(kIconType + kGlobal);
  EXPECT_EQ(hex(dye()), "#112233ff");
  EXPECT_EQ(cachedEntry(), nullptr);
}

TEST_F(IconColor, WithADamagedIconIsTheFallback) {
  const std::string file = folder.path() + "/icon.png";
  std::ofstream(file) << "no picture";
  appWithIcon(kIconType + kGlobal, file.c_str());
  EXPECT_EQ(hex(dye()), "#112233ff");
  EXPECT_EQ(cachedEntry(), nullptr);
}

TEST_F(IconColor, WithoutABundleIsTheFallbackAndTheListIsAskedAllTheSame) {
  settings(kIconType + kGlobal);
  start({});
  load();
  Recorded<"iconOfSize:forDisplayIdentifier:", UIImage*(NSUInteger, NSString*)>::install(
      objc_getClass("ALApplicationList"));
  EXPECT_EQ(hex(dye()), "#112233ff");
  EXPECT_EQ(calls().size(), 1U);
}

TEST_F(IconColor, WithoutTheListIsTheFallback) {
  settings(kIconType + kGlobal);
  icons["com.example.app"] = kNotes;
  start("com.example.app", host::ProcessKind::application, {}, {"ALApplicationList"});
  load();
  EXPECT_EQ(hex(dye()), "#112233ff");
}

TEST_F(IconColor, IsNoDyeOfSpringBoard) {
  icons["com.apple.springboard"] = kNotes;
  springBoard(kIconType + kGlobal);
  EXPECT_EQ(hex(dye()), "#112233ff");
}

TEST_F(IconColor, OutlivesAChangeOfSettings) {
  appWithIcon(kIconType + kGlobal);
  NSObject* kept = manager();
  const std::string color = hex(send<UIColor*>(kept, "dye"_sel));
  settings(kIconType + "<key>global_color</key><string>#998877</string>");
  send<void>(send<NSObject*>(kept, "prefsMan"_sel), "notificationReceived"_sel);
  EXPECT_EQ(hex(send<UIColor*>(kept, "dye"_sel)), color);
}

TEST_F(IconColor, InTheBackgroundIsTheAveragesHue) {
  const std::string file = folder.path() + "/red.png";
  appWithIcon(kIconType + kGlobal);
  send<void>(UIApplication::sharedApplication(), "setApplicationState:"_sel, NSInteger{2});
  auto* color = dye();
  EXPECT_DOUBLE_EQ(send<CGFloat>(color, "saturation"_sel), 1.0);
  EXPECT_DOUBLE_EQ(send<CGFloat>(color, "brightness"_sel), 0.875);
}

TEST_F(IconColor, WithoutGraphicsIsBlackOrWhite) {
  appWithIcon(kIconType + kGlobal);
  host::gl::setAvailable(false);
  // Black and black have no saturation, so the background is not more saturated than the text.
  EXPECT_EQ(hex(dye()), "#000000ff");
}

}  // namespace
