// The list of applications, and the page of one.
#include "support/settings_pane.h"

namespace {

using namespace test;

using Names = std::vector<std::string>;

class ApplicationsPage : public SettingsPane {
 protected:
  void openApplications(const std::string& entries = "<key>enabled</key><true/>") {
    icons["com.example.app"] = VARNIX_SAMPLES "/icons/com.example.mail.png";
    openFrom("com.example.app", entries);
    press("Apps");
  }
  static Names titlesOf(const pages::Section& section) {
    Names all;
    for (const auto& row : section.rows) all.push_back(row.title());
    return all;
  }
};

TEST_F(ApplicationsPage, ListsAllThatCanBeSeenByName) {
  openApplications();
  const auto sections = pages::sections();
  ASSERT_EQ(sections.size(), 1U);
  EXPECT_EQ(sections[0].header, "All Others");
  EXPECT_EQ(titlesOf(sections[0]), (Names{"App", "Instagram", "Mail", "Maps", "Messages", "Music",
                                          "Notes", "Photos", "Safari", "Settings", "Twitter"}));
}

TEST_F(ApplicationsPage, ListsThoseWithSettingsOfTheirOwnFirst) {
  openApplications(
      "<key>com.apple.Maps_enabled</key><false/>"
      "<key>com.apple.Music_enabled</key><true/>"
      "<key>com.apple.mobilemail_scope_enabled</key><true/>"
      "<key>com.apple.mobilenotes_scope_enabled</key><string>never</string>"
      "<key>com.apple.mobilesafari_global_color</key><string>#ffffff</string>");
  const auto sections = pages::sections();
  ASSERT_EQ(sections.size(), 2U);
  EXPECT_EQ(sections[0].header, "With Their Own Settings");
  EXPECT_EQ(titlesOf(sections[0]), (Names{"Mail", "Maps"}));
  EXPECT_EQ(titlesOf(sections[1]), (Names{"App", "Instagram", "Messages", "Music", "Notes",
                                          "Photos", "Safari", "Settings", "Twitter"}));
}

TEST_F(ApplicationsPage, FindsByAPartOfTheName) {
  openApplications("<key>com.apple.mobilemail_scope_enabled</key><true/>");
  ASSERT_NE(pages::searchField(), nullptr);
  pages::search("mA"_ns);
  ASSERT_EQ(pages::sections().size(), 2U);
  EXPECT_EQ(titlesOf(pages::sections()[0]), Names{"Mail"});
  EXPECT_EQ(titlesOf(pages::sections()[1]), Names{"Maps"});
  pages::search("qq"_ns);
  ASSERT_EQ(pages::sections().size(), 1U);
  EXPECT_EQ(titlesOf(pages::sections()[0]), Names{"No Apps Found"});
  pages::search(""_ns);
  EXPECT_EQ(pages::sections().size(), 2U);
}

TEST_F(ApplicationsPage, ShowsIconsAsTheyCome) {
  icons["com.example.app"] = VARNIX_SAMPLES "/icons/com.example.mail.png";
  open();
  auto* list = send<NSObject*>(objc_getClass("ALApplicationList"), "sharedApplicationList"_sel);
  // Nobody has asked for it yet, and the page does not wait for it.
  EXPECT_FALSE(send<bool>(list, "hasCachedIconOfSize:forDisplayIdentifier:"_sel, NSUInteger{29},
                          "com.example.app"_ns));
  press("Apps");
  EXPECT_TRUE(eventually([] { return row("App").icon() != nullptr; }));
  EXPECT_EQ(send(row("App").icon(), UIImage::size).width, 29);
}

TEST_F(ApplicationsPage, SaysSoWithoutTheList) {
  withoutLibraries = {"libapplist"};
  openApplications();
  ASSERT_EQ(pages::sections().size(), 1U);
  EXPECT_EQ(titlesOf(pages::sections()[0]), Names{"The list of apps is missing"});
  EXPECT_FALSE(pages::sections()[0].rows[0].isEnabled() && pages::sections()[0].rows[0].isLink());
  pages::back();
  flip("Album Art");
  EXPECT_EQ(stored("use_album_art"), "1");
}

class ApplicationPage : public ApplicationsPage {
 protected:
  void openApplication(const std::string& entries = "<key>enabled</key><true/>") {
    openApplications(entries);
    press("App");
  }
  /// Blue, as the library does it.
  static void storeIconColor(NSString* messagesColor) {
    NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(rgb(0, 0, 1));
    auto* file = NSMutableDictionary::dictionary();
    send(file, NSMutableDictionary::setObjectForKey, archive,
         "cached_icon_color_com.example.app"_ns);
    send(file, NSMutableDictionary::setObjectForKey, messagesColor, "sms_color"_ns);
    ASSERT_TRUE(send(file, NSDictionary::writeToFile,
                     "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist"_ns, true));
  }
};

TEST_F(ApplicationPage, HasARowForEverything) {
  openApplication();
  EXPECT_EQ(title(), "App");
  Names all;
  for (const auto& section : pages::sections()) {
    for (const auto& row : section.rows) all.push_back(row.title());
  }
  EXPECT_EQ(all, (Names{"Colour This App", "Own Settings", "Colour From", "My Colour", "Status Bar",
                        "Folders", "Control Centre", "Notification Centre", "Messages", "Keyboard",
                        "Volume", "Not Yet Known", "Find Again"}));
}

TEST_F(ApplicationPage, CanBeLeftOut) {
  openApplication();
  EXPECT_TRUE(row("Colour This App").isOn());
  flip("Colour This App");
  EXPECT_EQ(stored("com.example.app_enabled"), "0");
  flip("Colour This App");
  EXPECT_EQ(stored("com.example.app_enabled"), "1");
  pages::back();
  EXPECT_EQ(pages::sections().size(), 1U);
}

TEST_F(ApplicationPage, HasValuesOfItsOwnOnceTheyCount) {
  openApplication(
      "<key>global_color</key><string>#102030</string>"
      "<key>cc_color_type</key><integer>1</integer>"
      "<key>com.example.app_keyboard_color</key><string>#a0b0c0</string>");
  for (const char* name : {"Colour From", "My Colour", "Keyboard", "Volume"})
    EXPECT_FALSE(row(name).isEnabled()) << name;
  EXPECT_EQ(row("Control Centre").detail(), "Off");
  flip("Own Settings");
  settle();
  EXPECT_EQ(stored("com.example.app_scope_enabled"), "1");
  for (const char* name : {"Colour From", "My Colour", "Keyboard", "Volume"})
    EXPECT_TRUE(row(name).isEnabled()) << name;

  press("Keyboard");
  choose("Colour", "Own Colour");
  EXPECT_EQ(stored("com.example.app_keyboard_color_type"), "2");
  EXPECT_EQ(stored("keyboard_color_type"), "none");
  EXPECT_EQ(other->ask("keyboardDye", "#a0b0c0ff"), "#a0b0c0ff");
  EXPECT_EQ(hex(send<UIColor*>(manager(), "keyboardDye"_sel)), "#102030ff");
  pages::back();
  EXPECT_EQ(row("Keyboard").detail(), "Own Colour #a0b0c0");

  press("Control Centre");
  EXPECT_EQ(row("Colour").detail(), "Off");
  choose("Colour", "Varnix Colour");
  EXPECT_EQ(stored("com.example.app_cc_color_type"), "0");
  EXPECT_EQ(stored("cc_color_type"), "1");
  pages::back();

  flip("Own Settings");
  EXPECT_EQ(other->ask("keyboardDye", "#102030ff"), "#102030ff");
  pages::back();
  // It still has them, but they do not count.
  EXPECT_EQ(pages::sections().size(), 1U);
}

TEST_F(ApplicationPage, ChoosesItsIconsColor) {
  openApplication("<key>com.example.app_scope_enabled</key><true/>");
  choose("Colour From", "App Icon");
  EXPECT_EQ(stored("com.example.app_global_color_type"), "1");
  EXPECT_EQ(row("Colour From").detail(), "App Icon");
}

TEST_F(ApplicationPage, ForgetsTheIconsColorAndNothingThatOthersWrote) {
  openApplication("<key>sms_color</key><string>#111111</string>");
  storeIconColor("#111111"_ns);
  announceChange();
  EXPECT_TRUE(eventually([] { return row("Find Again").isEnabled(); }));
  storeIconColor("#222222"_ns);  // nobody announces this change
  press("Find Again");
  EXPECT_EQ(stored("cached_icon_color_com.example.app"), "none");
  EXPECT_EQ(stored("sms_color"), "#222222");
}

TEST_F(ApplicationPage, ForgetsTheIconsColor) {
  openApplication("<key>sms_color</key><string>#111111</string>");
  EXPECT_FALSE(row("Find Again").isEnabled());
  storeIconColor("#222222"_ns);
  announceChange();
  EXPECT_TRUE(eventually([] { return has("#0000ff"); }));
  EXPECT_TRUE(row("Find Again").isEnabled());
  press("Find Again");
  settle();
  EXPECT_EQ(stored("cached_icon_color_com.example.app"), "none");
  EXPECT_EQ(stored("sms_color"), "#222222");
  EXPECT_TRUE(has("Not Yet Known"));
  EXPECT_FALSE(row("Find Again").isEnabled());
}

}  // namespace
