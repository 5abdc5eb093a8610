// The first page of the settings pane.
#include "support/settings_pane.h"

namespace {

using namespace test;

class FrontPage : public SettingsPane {};

std::vector<std::string> titles() {
  std::vector<std::string> all;
  for (const auto& section : pages::sections()) {
    for (const auto& row : section.rows) all.push_back(row.title());
  }
  return all;
}

TEST_F(FrontPage, HasARowForEverything) {
  open();
  EXPECT_EQ(title(), "Varnix");
  EXPECT_EQ(titles(), (std::vector<std::string>{
                          "Enabled", "Colour From", "My Colour", "Album Art", "Status Bar",
                          "Folders", "Control Centre", "Notification Centre", "Messages",
                          "Keyboard", "Volume", "Apps", "Presets", "Copy Settings",
                          "Paste Settings", "Restart SpringBoard", "Email Us", "Follow Us"}));
}

TEST_F(FrontPage, SwitchesTheWholeSystem) {
  open();
  EXPECT_TRUE(row("Enabled").isOn());
  flip("Enabled");
  EXPECT_EQ(stored("enabled"), "0");
  EXPECT_FALSE(row("Enabled").isOn());
  settle();
  EXPECT_FALSE(row("Enabled").isOn());
  flip("Enabled");
  EXPECT_EQ(stored("enabled"), "1");
}

TEST_F(FrontPage, SwitchesAlbumArt) {
  open();
  EXPECT_FALSE(row("Album Art").isOn());
  flip("Album Art");
  EXPECT_EQ(stored("use_album_art"), "1");
  EXPECT_TRUE(row("Album Art").isOn());
}

TEST_F(FrontPage, ChoosesTheIconsColor) {
  openFrom("com.example.app",
           "<key>global_color</key><string>#102030</string>"
           "<key>com.example.app_scope_enabled</key><true/>"
           "<key>com.example.app_global_color_type</key><integer>0</integer>");
  EXPECT_EQ(row("Colour From").detail(), "My Colour");
  choose("Colour From", "App Icon");
  EXPECT_EQ(stored("global_color_type"), "1");
  EXPECT_EQ(row("Colour From").detail(), "App Icon");
  choose("Colour From", "My Colour");
  EXPECT_EQ(stored("global_color_type"), "0");
  EXPECT_EQ(other->ask("dye", "#102030ff"), "#102030ff");
}

TEST_F(FrontPage, ShowsWhatEachElementFollows) {
  open(
      "<key>global_color</key><string>#102030</string>"
      "<key>keyboard_color_type</key><integer>2</integer>"
      "<key>keyboard_color</key><string>#abcdef</string>"
      "<key>cc_color_type</key><integer>1</integer>"
      "<key>nc_color_type</key><integer>7</integer>");
  EXPECT_EQ(row("Status Bar").detail(), "Varnix Colour");
  EXPECT_EQ(row("Keyboard").detail(), "Own Colour #abcdef");
  EXPECT_EQ(row("Control Centre").detail(), "Off");
  EXPECT_EQ(row("Notification Centre").detail(), "Varnix Colour");
  EXPECT_EQ(row("Keyboard").spokenLabel(), "Keyboard");
  EXPECT_EQ(row("Keyboard").spokenValue(), "Own Colour #abcdef");
  for (const char* element : {"Status Bar", "Keyboard", "Control Centre"}) {
    EXPECT_NE(row(element).icon(), nullptr) << element;
    EXPECT_TRUE(row(element).isLink()) << element;
  }
}

TEST_F(FrontPage, FollowsChangesFromElsewhereAtOnce) {
  open("<key>global_color</key><string>#102030</string>");
  EXPECT_EQ(row("Keyboard").detail(), "Varnix Colour");
  changeElsewhere("<key>enabled</key><false/><key>keyboard_color_type</key><integer>1</integer>");
  EXPECT_TRUE(eventually([] { return row("Keyboard").detail() == "Off"; }));
  EXPECT_FALSE(row("Enabled").isOn());
}

TEST_F(FrontPage, ShowsDefaultsForValuesOfAWrongKindAndLeavesThem) {
  const std::string wrong =
      "<key>enabled</key><array/><key>use_album_art</key><dict/>"
      "<key>global_color_type</key><data>AAAA</data><key>global_color</key><integer>7</integer>"
      "<key>keyboard_color_type</key><date>2020-01-01T00:00:00Z</date>";
  open(wrong);
  EXPECT_TRUE(row("Enabled").isOn());
  EXPECT_FALSE(row("Album Art").isOn());
  EXPECT_EQ(row("Colour From").detail(), "My Colour");
  EXPECT_EQ(row("Keyboard").detail(), "Varnix Colour");
  EXPECT_NE(contentsOf(settingsPath()).find(wrong), std::string::npos);
  // Another change leaves them as they are.
  flip("Album Art");
  EXPECT_EQ(stored("use_album_art"), "1");
  auto* file = objc::as<NSDictionary>(host::propertyListFromFile(settingsPath()));
  EXPECT_NE(objc::as<NSArray>(send(file, NSDictionary::objectForKey, "enabled"_ns)), nullptr);
  EXPECT_NE(objc::as<NSDate>(send(file, NSDictionary::objectForKey, "keyboard_color_type"_ns)),
            nullptr);
}

TEST_F(FrontPage, KeepsWhatOthersWroteWithoutAWord) {
  open("<key>global_color</key><string>#102030</string>");
  // Nobody announces this change.
  settings(
      "<key>global_color</key><string>#405060</string><key>sms_color</key><string>#111111</"
      "string>");
  flip("Album Art");
  EXPECT_EQ(stored("global_color"), "#405060");
  EXPECT_EQ(stored("sms_color"), "#111111");
  EXPECT_EQ(stored("use_album_art"), "1");
}

TEST_F(FrontPage, AsksBeforeItRestarts) {
  program("killall", "echo \"$@\" > " + folder.path() + "/killed\n");
  open();
  press("Restart SpringBoard");
  EXPECT_EQ(alertTitle(), "Restart SpringBoard?");
  answer("Cancel");
  settle();
  EXPECT_FALSE(std::filesystem::exists(folder.path() + "/killed"));
  press("Restart SpringBoard");
  answer("Restart");
  EXPECT_TRUE(
      eventually([this] { return contentsOf(folder.path() + "/killed") == "-9 SpringBoard\n"; }));
}

TEST_F(FrontPage, InvitesOnce) {
  start("com.apple.Preferences");
  load();
  pages::open();
  press("Varnix");
  EXPECT_EQ(alertTitle(), "Varnix");
  answer("No thanks!");
  EXPECT_EQ(alertTitle(), "none");
  pages::back();
  press("Varnix");
  EXPECT_EQ(alertTitle(), "none");
}

TEST_F(FrontPage, DyesItselfInThePresentDye) {
  open("<key>global_color</key><string>#102030</string>");
  auto* bar = send<NSObject*>(pages::navigation(), "navigationBar"_sel);
  auto tint = [bar] { return hex(send<UIColor*>(bar, "tintColor"_sel)); };
  EXPECT_EQ(tint(), "#102030ff");
  changeElsewhere("<key>global_color</key><string>#405060</string>");
  EXPECT_TRUE(eventually([&] { return tint() == "#405060ff"; }));
}

TEST_F(FrontPage, GivesTheBarItsColorsBack) {
  open("<key>enabled</key><false/><key>global_color</key><string>#102030</string>");
  auto* bar = send<NSObject*>(pages::navigation(), "navigationBar"_sel);
  auto title = [bar] {
    auto* attributes = send<NSDictionary*>(bar, "titleTextAttributes"_sel);
    return hex(static_cast<UIColor*>(
        send(attributes, NSDictionary::objectForKey, NSForegroundColorAttributeName)));
  };
  EXPECT_EQ(title(), "#102030ff");
  press("Keyboard");
  EXPECT_EQ(title(), "#102030ff");
  pages::back();
  pages::back();
  EXPECT_EQ(title(), "#000000ff");
}

TEST_F(FrontPage, SpeaksTheUsersLanguage) {
  language = "de";
  open();
  EXPECT_TRUE(has("Aktiviert"));
  EXPECT_TRUE(has("Statusleiste"));
  EXPECT_FALSE(has("Enabled"));
}

}  // namespace
