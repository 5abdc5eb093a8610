// The page of an element.
#include "prefs/elements.h"
#include "support/settings_pane.h"

namespace {

using namespace test;

class ElementPage : public SettingsPane {
 protected:
  static std::string choice() { return row("Colour").detail(); }
};

struct Named {
  const char* title;
  const char* key;
  const char* operation;
};

// In the order of the page.
constexpr Named kNamed[] = {
    {"Status Bar", "statusbar", "statusBarDye"},
    {"Folders", "folder", "folderDye"},
    {"Control Centre", "cc", "ccDye"},
    {"Notification Centre", "nc", "ncDye"},
    {"Messages", "sms", "smsDye"},
    {"Keyboard", "keyboard", "keyboardDye"},
    {"Volume", "volume", "volDye"},
};
static_assert(std::size(kNamed) == varnix::settings::kElementCount);

TEST_F(ElementPage, OfEachElementStoresItsTypeForEverybodyAtOnce) {
  std::string entries = "<key>global_color</key><string>#102030</string>";
  for (const Named& element : kNamed)
    entries += "<key>" + std::string(element.key) + "_color</key><string>#a0b0c0</string>";
  openFrom("com.example.app", entries);
  for (const Named& element : kNamed) {
    const std::string type = element.key + std::string("_color_type");
    press(element.title);
    EXPECT_EQ(title(), element.title);
    EXPECT_EQ(choice(), "Varnix Colour");
    EXPECT_EQ(other->ask(element.operation, "#102030ff"), "#102030ff");
    choose("Colour", "Own Colour");
    EXPECT_EQ(stored(type), "2");
    EXPECT_EQ(choice(), "Own Colour");
    EXPECT_EQ(other->ask(element.operation, "#a0b0c0ff"), "#a0b0c0ff") << element.title;
    choose("Colour", "Off");
    EXPECT_EQ(stored(type), "1");
    EXPECT_EQ(other->ask(element.operation, "nil"), "nil") << element.title;
    choose("Colour", "Varnix Colour");
    EXPECT_EQ(stored(type), "0");
    EXPECT_EQ(other->ask(element.operation, "#102030ff"), "#102030ff") << element.title;
    pages::back();
  }
}

TEST_F(ElementPage, EnablesItsOwnColorWhereThatCounts) {
  open("<key>keyboard_color</key><string>#a0b0c0</string>");
  press("Keyboard");
  EXPECT_FALSE(row("Own Colour").isEnabled());
  choose("Colour", "Own Colour");
  EXPECT_TRUE(row("Own Colour").isEnabled());
  choose("Colour", "Off");
  EXPECT_FALSE(row("Own Colour").isEnabled());
}

TEST_F(ElementPage, ShowsItsPictureInTheColor) {
  open(
      "<key>global_color</key><string>#102030</string>"
      "<key>keyboard_color</key><string>#a0b0c0</string>");
  press("Keyboard");
  // The row has a picture and no title.
  auto picture = [] { return pages::sections().at(0).rows.at(0); };
  EXPECT_EQ(picture().title(), "");
  EXPECT_EQ(picture().spokenLabel(), "Keyboard");
  EXPECT_EQ(picture().spokenValue(), "#102030");
  ASSERT_NE(picture().icon(), nullptr);
  EXPECT_EQ(send(picture().icon(), UIImage::size).width, 240);
  EXPECT_EQ(send(picture().icon(), UIImage::size).height, 96);
  choose("Colour", "Own Colour");
  EXPECT_EQ(picture().spokenValue(), "#a0b0c0");
  changeElsewhere("<key>keyboard_color_type</key><integer>1</integer>");
  EXPECT_TRUE(eventually([&] { return picture().spokenValue().empty(); }));
  EXPECT_EQ(choice(), "Off");
}

TEST_F(ElementPage, ShowsItsTypeOnTheFirstPageToo) {
  open();
  press("Volume");
  choose("Colour", "Off");
  pages::back();
  EXPECT_EQ(row("Volume").detail(), "Off");
}

TEST_F(ElementPage, ReadsAnyOtherTypeAsFollowing) {
  open("<key>cc_color_type</key><integer>-3</integer>");
  press("Control Centre");
  EXPECT_EQ(choice(), "Varnix Colour");
  EXPECT_EQ(stored("cc_color_type"), "-3");
}

}  // namespace
