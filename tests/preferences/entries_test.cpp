// The list of settings: what packages add to it, and what happens to entries that do not work.
#include "preferences/settings_app.h"

namespace {

using namespace test;

class Entries : public SettingsApp {
 protected:
  void SetUp() override { installedFolder = ""; }
  void entry(const std::string& name, const std::string& rest) const {
    file("/Library/PreferenceLoader/Preferences/" + name + ".plist", list(rest));
  }
  static std::string labelled(const std::string& label, const std::string& more = {}) {
    return "<key>entry</key><dict><key>cell</key><string>PSLinkCell</string><key>label</key>"
           "<string>" +
           label + "</string>" + more + "</dict>";
  }
  static std::string bundled(const std::string& label, const std::string& bundle) {
    return labelled(label, "<key>bundle</key><string>" + bundle +
                               "</string><key>isController</key><true/><key>detail</key>"
                               "<string>VNXFrontPage</string>");
  }
  static std::string filtered(const std::string& label, const std::string& numbers) {
    return labelled(label) + "<key>filter</key><dict><key>CoreFoundationVersion</key><array>" +
           numbers + "</array></dict>";
  }
  static std::string footer() {
    const auto sections = pages::sections();
    return sections.empty() ? "" : sections[0].footer;
  }
};

TEST_F(Entries, AreSortedByTheirNames) {
  entry("1", labelled("Pear"));
  entry("2", labelled("Apple"));
  entry("deep/down/3", labelled("Fig"));
  startSettings();
  pages::open();
  EXPECT_EQ(pages::titleOf(pages::topPage()), "Settings");
  EXPECT_EQ(titles(), (std::vector<std::string>{"Apple", "Fig", "Pear"}));
}

TEST_F(Entries, AFilterLetsItsSystemsPass) {
  // The stand-in's is 1280.38.
  entry("1", filtered("From", "<real>1280.38</real>"));
  entry("2", filtered("Later", "<real>1280.39</real>"));
  entry("3", filtered("Between", "<real>1200</real><real>1300</real>"));
  entry("4", filtered("Earlier", "<real>1200</real><real>1280.38</real>"));
  entry("5", filtered("Whole", "<integer>1000</integer>"));
  entry("6", filtered("Any", ""));
  entry("7", filtered("Odd", "<string>9</string>"));
  startSettings();
  pages::open();
  EXPECT_EQ(titles(), (std::vector<std::string>{"Any", "Between", "From", "Odd", "Whole"}));
}

TEST_F(Entries, WhatIsNoEntryIsLeftOut) {
  entry("1", labelled("Good"));
  entry("2", "<key>items</key><array/>");
  entry("3", "<key>entry</key><string>no</string>");
  entry("4", "<key>entry</key><dict><key>label</key><integer>4</integer></dict>");
  file("/Library/PreferenceLoader/Preferences/5.plist", "garbage");
  file("/Library/PreferenceLoader/Preferences/6.txt", list(labelled("Text")));
  startSettings();
  pages::open();
  EXPECT_EQ(titles(), std::vector<std::string>{"Good"});
}

TEST_F(Entries, ABundleThatIsNotThereGivesAPageThatSaysSo) {
  entry("1", bundled("Lost", "Lost"));
  entry("2", bundled("Away", "../../../../etc"));
  entry("3", labelled("Nothing"));
  startSettings();
  for (const char* name : {"Lost", "Away", "Nothing"}) {
    pages::open();
    pages::press(row(name));
    EXPECT_EQ(pages::depth(), 2U);
    EXPECT_EQ(pages::titleOf(pages::topPage()), name);
    EXPECT_EQ(footer(),
              "There was an error loading the preference bundle for " + std::string(name) + ".");
    EXPECT_TRUE(pages::back());
  }
}

TEST_F(Entries, ABundleThatCannotBeLoadedGivesAPageThatSaysSo) {
  entry("1", bundled("Broken", "Broken"));
  file("/Library/PreferenceBundles/Broken.bundle/Broken", "no library");
  startSettings();
  pages::open();
  pages::press(row("Broken"));
  EXPECT_EQ(footer(), "There was an error loading the preference bundle for Broken.");
  const auto lines = log();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_NE(lines[0].find("Error loading /Library/PreferenceBundles/Broken.bundle/Broken"),
            std::string::npos)
      << lines[0];
}

TEST_F(Entries, ABundleIsMendedWithoutARestart) {
  entry("1", bundled("Pane", "Pane"));
  file("/Library/PreferenceBundles/Pane.bundle/Pane", "no library");
  startSettings();
  load();  // which the pane links
  pages::open();
  pages::press(row("Pane"));
  pages::back();
  std::filesystem::copy_file(
      host::ownFolder() / "installed/Library/PreferenceBundles/VarnixPrefs.bundle/VarnixPrefs",
      folder.path() + "/Library/PreferenceBundles/Pane.bundle/Pane",
      std::filesystem::copy_options::overwrite_existing);
  pages::press(row("Pane"));
  EXPECT_STREQ(class_getName(pages::topPage()->isa), "VNXFrontPage");
}

TEST_F(Entries, OfTheSystemsOwnFolderCountToo) {
  entry("1", bundled("Pane", "Pane"));
  const std::string home = folder.path() + "/System/Library/PreferenceBundles/Pane.bundle";
  std::filesystem::create_directories(home);
  std::filesystem::copy_file(
      host::ownFolder() / "installed/Library/PreferenceBundles/VarnixPrefs.bundle/VarnixPrefs",
      home + "/Pane");
  startSettings();
  load();
  pages::open();
  pages::press(row("Pane"));
  EXPECT_STREQ(class_getName(pages::topPage()->isa), "VNXFrontPage");
}

TEST_F(Entries, OfARootHideWhatIsInstalled) {
  installedFolder = {};
  entry("VarnixPrefs", labelled("Mine"));
  startSettings();
  pages::open();
  EXPECT_EQ(titles(), std::vector<std::string>{"Mine"});
}

TEST_F(Entries, APhoneWithoutPackagesHasNone) {
  startSettings();
  pages::open();
  pages::open();
  EXPECT_EQ(titles(), std::vector<std::string>{});
  EXPECT_EQ(pages::depth(), 1U);
  EXPECT_FALSE(pages::back());
}

}  // namespace
