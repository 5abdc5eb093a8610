// Presets, and settings as text on the clipboard.
#include "prefs/presets.h"
#include "support/settings_pane.h"

namespace {

using namespace test;
using varnix::settings::kPresets;

class PresetsPage : public SettingsPane {
 protected:
  std::map<std::string, std::string> all() const {
    std::map<std::string, std::string> entries;
    auto* file = objc::as<NSDictionary>(host::propertyListFromFile(settingsPath()));
    NSArray* keys = send(file, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      NSObject* key = send(keys, NSArray::objectAtIndex, i);
      NSObject* value = send(file, NSDictionary::objectForKey, key);
      auto* data = objc::as<NSData>(value);
      entries[pages::Row::words(key)] = data == nullptr
                                            ? pages::Row::words(value)
                                            : std::to_string(send(data, NSData::length)) + " bytes";
    }
    return entries;
  }
  static std::string clipboard() {
    auto* board = send<NSObject*>(objc_getClass("UIPasteboard"), "generalPasteboard"_sel);
    return pages::Row::words(send<NSObject*>(board, "string"_sel));
  }
  static void setClipboard(const std::string& text) {
    auto* board = send<NSObject*>(objc_getClass("UIPasteboard"), "generalPasteboard"_sel);
    send<void>(board, "setString:"_sel, host::makeString(text));
  }
};

const std::string kBefore =
    "<key>enabled</key><true/><key>global_color</key><string>#102030</string>"
    "<key>global_color_type</key><integer>1</integer>"
    "<key>use_album_art</key><true/><key>com.example.mail_scope_enabled</key><true/>"
    "<key>com.example.mail_sms_color_type</key><integer>1</integer>"
    "<key>cached_icon_color_com.example.mail</key><data>AAAA</data>";

TEST_F(PresetsPage, AreTenWithADiscEach) {
  open();
  press("Presets");
  const auto sections = pages::sections();
  ASSERT_EQ(sections.size(), 1U);
  ASSERT_EQ(sections[0].rows.size(), 10U);
  for (std::size_t i = 0; i < 10; ++i) {
    EXPECT_EQ(sections[0].rows[i].title(), kPresets[i].name);
    EXPECT_NE(sections[0].rows[i].icon(), nullptr);
  }
}

TEST_F(PresetsPage, AskApplyAndCanBeUndoneOnce) {
  openFrom("com.example.app", kBefore);
  press("Presets");
  const auto before = all();
  press("Ocean");
  EXPECT_EQ(alertTitle(), "Use Ocean?");
  answer("Cancel");
  EXPECT_EQ(all(), before);
  EXPECT_FALSE(has("Undo Ocean"));

  press("Ocean");
  answer("Replace");
  const auto after = all();
  EXPECT_EQ(after.at("global_color"), "#1971c2");
  EXPECT_EQ(after.at("global_color_type"), "0");
  EXPECT_EQ(after.at("cc_color_type"), "2");
  EXPECT_EQ(after.at("cc_color"), "#0b3c6f");
  EXPECT_EQ(after.at("keyboard_color_type"), "0");
  // What is no colour stays, and so does what applications have of their own.
  EXPECT_EQ(after.at("use_album_art"), "1");
  EXPECT_EQ(after.at("com.example.mail_sms_color_type"), "1");
  EXPECT_EQ(after.at("cached_icon_color_com.example.mail"),
            before.at("cached_icon_color_com.example.mail"));
  EXPECT_EQ(other->ask("ccDye", "#0b3c6fff"), "#0b3c6fff");
  EXPECT_EQ(other->ask("dye", "#1971c2ff"), "#1971c2ff");

  ASSERT_TRUE(has("Undo Ocean"));
  press("Undo Ocean");
  settle();
  EXPECT_EQ(all(), before);
  EXPECT_FALSE(has("Undo Ocean"));
}

TEST_F(PresetsPage, UndoTheLastOne) {
  open(kBefore);
  press("Presets");
  press("Mint");
  answer("Replace");
  press("Candy");
  answer("Replace");
  press("Undo Candy");
  settle();
  EXPECT_EQ(stored("global_color"), "#12a594");
  pages::back();
  EXPECT_FALSE(has("Undo Candy"));
}

TEST_F(PresetsPage, CanBeUndoneFromTheFirstPageToo) {
  open(kBefore);
  press("Presets");
  press("Mint");
  answer("Replace");
  pages::back();
  press("Undo Mint");
  settle();
  EXPECT_EQ(stored("global_color"), "#102030");
  EXPECT_FALSE(has("Undo Mint"));
}

TEST_F(PresetsPage, SettingsTravelAsText) {
  open(kBefore + "<key>unknown</key><string>x</string>");
  const auto before = all();
  press("Copy Settings");
  EXPECT_EQ(alertTitle(), "Copied");
  answer("OK");
  const std::string text = clipboard();
  EXPECT_TRUE(text.starts_with("<?xml")) << text;
  EXPECT_EQ(text.find("cached_icon"), text.npos);
  EXPECT_EQ(text.find("unknown"), text.npos);

  press("Presets");
  press("Candy");
  answer("Replace");
  pages::back();
  press("Paste Settings");
  EXPECT_EQ(alertTitle(), "Use These Settings?");
  answer("Replace");
  EXPECT_EQ(all(), before);
}

TEST_F(PresetsPage, WhatIsNoSettingIsNotPasted) {
  open(kBefore);
  const auto before = all();
  for (const char* text :
       {"", "hello", "<plist><dict><key>global_color</key></plist>",
        "<plist version=\"1.0\"><array/></plist>",
        "<plist version=\"1.0\"><dict><key>global_color</key><integer>7</integer>"
        "<key>other</key><string>#ffffff</string>"
        "<key>cc_color</key><string>blue</string></dict></plist>"}) {
    setClipboard(text);
    press("Paste Settings");
    EXPECT_EQ(alertTitle(), "Nothing to Paste") << text;
    answer("OK");
    EXPECT_EQ(all(), before) << text;
  }
}

TEST_F(PresetsPage, ForeignEntriesOfPastedTextAreLeftOut) {
  open(kBefore);
  setClipboard(
      "<plist version=\"1.0\"><dict><key>global_color</key><string>#0a0b0c</string>"
      "<key>cached_icon_color_com.example.mail</key><string>evil</string>"
      "<key>cached_icon_color_of_enabled</key><true/>"
      "<key>other</key><string>x</string>"
      "<key>com.example.notes_enabled</key><false/></dict></plist>");
  press("Paste Settings");
  answer("Replace");
  // The switch is on by default.
  EXPECT_EQ(all(), (std::map<std::string, std::string>{
                       {"global_color", "#0a0b0c"},
                       {"com.example.notes_enabled", "0"},
                       {"cached_icon_color_com.example.mail", "3 bytes"}}));
}

}  // namespace
