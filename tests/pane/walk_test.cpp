// Every row of every page, set as its user does it: the right key has the right value in the file,
// and another process carries the colour at once.
#include <set>

#include "ColorPicker/picker.h"
#include "UIKit/UIApplication_urls.h"
#include "prefs/keys.h"
#include "prefs/presets.h"
#include "support/settings_pane.h"
#include "support/walk.h"

namespace {

using namespace test;
using varnix::settings::kElements;
using varnix::settings::kKeys;

constexpr char kApplication[] = "com.example.app";

class PaneWalk : public SettingsPane {
 protected:
  /// Sets each row of the page on top. Rows behind which a page is are left to the walk.
  void setRows() {
    const auto sections = pages::sections();
    for (std::size_t i = 0; i < sections.size(); ++i) {
      for (std::size_t j = 0; j < sections[i].rows.size(); ++j) setRow(i, j);
    }
  }

  std::set<std::string> keys;     ///< that were set
  std::set<std::string> buttons;  ///< that were pressed

 private:
  /// What a row shows may have changed with the one before it.
  static pages::Row rowAt(std::size_t section, std::size_t row) {
    return pages::sections().at(section).rows.at(row);
  }
  static std::string property(const pages::Row& row, NSString* key) {
    return pages::Row::words(send(row.specifier, PSSpecifier::propertyForKey, key));
  }

  void setRow(std::size_t section, std::size_t at) {
    const pages::Row row = rowAt(section, at);
    const std::string name = title() + " > " + row.title();
    if (row.type() == PSSwitchCell) {
      keys.insert(property(row, "key"_ns));
      setSwitch(section, at, name);
    } else if (row.type() == PSLinkListCell) {
      keys.insert(property(row, "key"_ns));
      setChoice(section, at, name);
    } else if (send(row.specifier, PSSpecifier::propertyForKey, "libcolorpicker"_ns) != nullptr) {
      setColor(row, name);
    } else if (row.type() == PSButtonCell) {
      pressButton(row, name);
    } else if (!row.isLink() && row.type() != PSListItemCell) {
      // A text or a picture: a finger changes nothing.
      const std::string before = contentsOf(settingsPath());
      const std::size_t depth = pages::depth();
      pages::press(row);
      EXPECT_EQ(pages::depth(), depth) << name;
      EXPECT_EQ(contentsOf(settingsPath()), before) << name;
    }
  }

  /// Ends with it on.
  void setSwitch(std::size_t section, std::size_t at, const std::string& name) {
    const bool wasOn = rowAt(section, at).isOn();
    for (int i = 0; i < (wasOn ? 2 : 3); ++i) {
      const pages::Row row = rowAt(section, at);
      const bool isWanted = !row.isOn();
      pages::flip(row);
      settle();
      EXPECT_EQ(stored(property(row, "key"_ns)), isWanted ? "1" : "0") << name;
      EXPECT_EQ(rowAt(section, at).isOn(), isWanted) << name;
    }
  }

  /// Ends with a colour of its own.
  void setChoice(std::size_t section, std::size_t at, const std::string& name) {
    NSArray* values = send(rowAt(section, at).specifier, PSSpecifier::values);
    const NSUInteger count = send(values, NSArray::count);
    ASSERT_GE(count, 2U) << name;
    std::string own = "0";
    for (NSUInteger i = 0; i <= count; ++i) {
      const pages::Row row = rowAt(section, at);
      const std::string key = property(row, "key"_ns);
      if (key.ends_with("_color_type") && !key.ends_with("global_color_type")) own = "2";
      pages::press(row);
      const auto choices = pages::sections().at(0).rows;
      ASSERT_EQ(choices.size(), count) << name;
      NSUInteger chosen = i;
      if (i == count) {
        for (chosen = 0; words(values, chosen) != own;) ASSERT_LT(++chosen, count) << name;
      }
      const std::string shown = choices.at(chosen).title();
      pages::press(choices.at(chosen));
      EXPECT_TRUE(pages::sections().at(0).rows.at(chosen).isTicked()) << name;
      pages::back();
      settle();
      EXPECT_EQ(stored(key), words(values, chosen)) << name;
      EXPECT_EQ(rowAt(section, at).detail(), shown) << name;
    }
  }
  static std::string words(NSArray* list, NSUInteger index) {
    return pages::Row::words(send(list, NSArray::objectAtIndex, index));
  }

  void setColor(const pages::Row& row, const std::string& name) {
    auto* cell = objc::as<NSDictionary>(
        send(row.specifier, PSSpecifier::propertyForKey, "libcolorpicker"_ns));
    const std::string key = pages::Row::words(send(cell, NSDictionary::objectForKey, "key"_ns));
    keys.insert(key);
    ASSERT_TRUE(row.isEnabled()) << name;
    other->settle();
    pages::press(row);
    NSObject* picker = host::shownPicker();
    ASSERT_NE(picker, nullptr) << name;
    EXPECT_FALSE(host::pickerHasAlpha(picker)) << name;
    // Another one for each row.
    const auto step = static_cast<CGFloat>(keys.size());
    UIColor* color = rgb(step / 51, 1, 0);
    host::choosePickerColor(picker, color);
    host::closePicker(picker);
    settle();
    std::string digits = hex(color).substr(0, 7);
    const std::string expected = digits + "ff";
    EXPECT_EQ(other->ask(operationOf(key), expected), expected) << name;
    for (char& c : digits) c = static_cast<char>(std::toupper(c));
    EXPECT_EQ(stored(key), digits + ":1.000000") << name;
    EXPECT_EQ(row.detail(), digits) << name;
  }
  static std::string operationOf(std::string key) {
    if (key.starts_with(kApplication)) key.erase(0, std::string(kApplication).size() + 1);
    for (const auto& element : kElements) {
      if (key == std::string(element.key) + "_color") return std::string(element.operation) + "Dye";
    }
    return "dye";
  }

  void pressButton(const pages::Row& row, const std::string& name) {
    buttons.insert(row.identifier());
    if (!row.isEnabled()) return;
    const std::string before = contentsOf(settingsPath());
    const NSUInteger opened = send(host::openedURLs(), NSArray::count);
    pages::press(row);
    // A question, an answer or another application: the settings stay.
    const bool isAlert = alertTitle() != "none";
    EXPECT_TRUE(isAlert || send(host::openedURLs(), NSArray::count) == opened + 1) << name;
    if (isAlert) host::pressAlertButton(topAlert(), 0);
    EXPECT_EQ(alertTitle(), "none") << name;
    EXPECT_EQ(contentsOf(settingsPath()), before) << name;
  }
  static NSObject* topAlert() { return send<NSObject*>(host::shownAlerts(), "lastObject"_sel); }
};

TEST_F(PaneWalk, SetsEveryKeyForEverybodyAndForAnApplication) {
  icons[kApplication] = VARNIX_SAMPLES "/icons/com.example.mail.png";
  openFrom(kApplication, "<key>enabled</key><true/>");
  walkPages("App", [this] { setRows(); });
  std::set<std::string> expected;
  for (const auto& key : kKeys) {
    expected.insert(key.name);
    // These hold for all of SpringBoard.
    if (std::string(key.name) != "use_album_art")
      expected.insert(std::string(kApplication) + "_" + key.name);
  }
  expected.insert(std::string(kApplication) + "_scope_enabled");
  EXPECT_EQ(keys, expected);
  std::set<std::string> pressed = {"copy", "paste", "restart", "mail", "profile", "icon.again"};
  for (const auto& preset : varnix::settings::kPresets) pressed.insert(preset.name);
  EXPECT_EQ(buttons, pressed);
}

}  // namespace
