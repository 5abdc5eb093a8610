// Colours are chosen with the colour library's cell, which writes the file by itself.
#include "ColorPicker/picker.h"
#include "support/settings_pane.h"

namespace {

using namespace test;

class PaneColors : public SettingsPane {
 protected:
  static void pick(const std::string& title, UIColor* color) {
    press(title);
    NSObject* picker = host::shownPicker();
    ASSERT_NE(picker, nullptr) << title;
    host::choosePickerColor(picker, color);
    host::closePicker(picker);
    settle();
  }
};

TEST_F(PaneColors, OfEverythingReachEveryProcessAtOnce) {
  openFrom("com.example.app", "<key>keyboard_color_type</key><integer>2</integer>");
  pick("My Colour", rgb(0, 1, 0));
  EXPECT_EQ(stored("global_color").substr(0, 7), "#00FF00");
  EXPECT_EQ(row("My Colour").detail().substr(0, 7), "#00FF00");
  EXPECT_EQ(other->ask("dye", "#00ff00ff"), "#00ff00ff");
  auto* bar = send<NSObject*>(pages::navigation(), "navigationBar"_sel);
  EXPECT_TRUE(
      eventually([bar] { return hex(send<UIColor*>(bar, "tintColor"_sel)) == "#00ff00ff"; }));

  press("Keyboard");
  pick("Own Colour", rgb(0, 0, 1));
  EXPECT_EQ(stored("keyboard_color").substr(0, 7), "#0000FF");
  EXPECT_EQ(other->ask("keyboardDye", "#0000ffff"), "#0000ffff");
  EXPECT_EQ(pages::sections().at(0).rows.at(0).spokenValue(), "#0000ff");
  pages::back();
  EXPECT_EQ(row("Keyboard").detail(), "Own Colour #0000ff");
}

TEST_F(PaneColors, OfAnApplicationAreItsOwn) {
  icons["com.example.app"] = VARNIX_SAMPLES "/icons/com.example.mail.png";
  openFrom("com.example.app",
           "<key>global_color</key><string>#102030</string>"
           "<key>com.example.app_scope_enabled</key><true/>");
  press("Apps");
  press("App");
  EXPECT_EQ(row("My Colour").detail(), "#102030");
  pick("My Colour", rgb(1, 0, 0));
  EXPECT_EQ(stored("com.example.app_global_color").substr(0, 7), "#FF0000");
  EXPECT_EQ(stored("global_color"), "#102030");
  EXPECT_EQ(other->ask("dye", "#ff0000ff"), "#ff0000ff");
  EXPECT_EQ(hex(send<UIColor*>(manager(), "dye"_sel)), "#102030ff");
}

TEST_F(PaneColors, ThatAreNotChosenChangeNothing) {
  open("<key>global_color</key><string>#102030</string>");
  const std::string before = contentsOf(settingsPath());
  press("My Colour");
  host::choosePickerColor(host::shownPicker(), rgb(1, 0, 0));
  host::cancelPicker(host::shownPicker());
  settle();
  EXPECT_EQ(contentsOf(settingsPath()), before);
}

TEST_F(PaneColors, AndSwitchesLoseNothingOfEachOther) {
  open("<key>sms_color</key><string>#111111</string>");
  for (int i = 0; i < 3; ++i) {
    flip("Album Art");
    pick("My Colour", rgb(0, i / 2.0, 1));
    flip("Enabled");
  }
  EXPECT_EQ(stored("use_album_art"), "1");
  EXPECT_EQ(stored("global_color").substr(0, 7), "#00FFFF");
  EXPECT_EQ(stored("enabled"), "0");
  EXPECT_EQ(stored("sms_color"), "#111111");
}

/// The cell's writing is heard only when the main loop runs; a switch may be flipped before.
TEST_F(PaneColors, ThatNobodyHasHeardOfYetAreKept) {
  open();
  press("My Colour");
  host::choosePickerColor(host::shownPicker(), rgb(1, 0, 0));
  host::closePicker(host::shownPicker());
  flip("Album Art");
  settle();
  EXPECT_EQ(stored("global_color").substr(0, 7), "#FF0000");
  EXPECT_EQ(stored("use_album_art"), "1");
}

TEST_F(PaneColors, OfElementsWithoutAnOwnOneCannotBeChosen) {
  open();
  press("Keyboard");
  press("Own Colour");
  EXPECT_EQ(host::shownPicker(), nullptr);
}

TEST_F(PaneColors, FollowWhatHoldsForEverybodyOnAnApplicationsPage) {
  icons["com.example.app"] = VARNIX_SAMPLES "/icons/com.example.mail.png";
  open("<key>com.example.app_scope_enabled</key><true/>");
  press("Apps");
  press("App");
  EXPECT_EQ(row("My Colour").detail(), "#DE3027");
  changeElsewhere(
      "<key>com.example.app_scope_enabled</key><true/>"
      "<key>global_color</key><string>#405060</string>");
  EXPECT_TRUE(eventually([] { return row("My Colour").detail() == "#405060"; }));
}

TEST_F(PaneColors, NeedTheLibrary) {
  withoutLibraries = {"libcolorpicker"};
  openFrom("com.example.app", "<key>global_color</key><string>#102030</string>");
  EXPECT_FALSE(has("My Colour"));
  EXPECT_TRUE(has("The colour library is missing"));
  press("Keyboard");
  EXPECT_TRUE(has("The colour library is missing"));
  choose("Colour", "Off");
  EXPECT_EQ(stored("keyboard_color_type"), "1");
  EXPECT_EQ(other->ask("keyboardDye", "nil"), "nil");
  EXPECT_EQ(other->ask("dye", "#102030ff"), "#102030ff");
}

}  // namespace
