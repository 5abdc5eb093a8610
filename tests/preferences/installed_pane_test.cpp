// The package's own pane, as the list of settings finds and opens it.
#include "Preferences/pages.h"
#include "support/pane.h"

namespace {

using namespace test;
namespace pages = host::settings;

class InstalledPane : public Pane {};

TEST_F(InstalledPane, OpensFromTheListOfSettings) {
  settingsApplication();  // which switches the library off
  pages::open();
  ASSERT_EQ(pages::titleOf(pages::topPage()), "Settings");
  auto sections = pages::sections();
  ASSERT_EQ(sections.size(), 1U);
  ASSERT_EQ(sections[0].rows.size(), 1U);
  EXPECT_EQ(sections[0].rows[0].title(), "Varnix");
  EXPECT_TRUE(sections[0].rows[0].isLink());
  // The picture with two pixels per point.
  UIImage* icon = sections[0].rows[0].icon();
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(send(icon, UIImage::size).width, 29);
  EXPECT_EQ(send(icon, UIImage::scale), 2);
  pages::press(sections[0].rows[0]);
  EXPECT_EQ(pages::depth(), 2U);
  EXPECT_STREQ(class_getName(pages::topPage()->isa), "VNXFrontPage");
  const auto front = pages::sections();
  ASSERT_FALSE(front.empty());
  ASSERT_FALSE(front[0].rows.empty());
  EXPECT_EQ(front[0].rows[0].title(), "Enabled");
  EXPECT_TRUE(front[0].rows[0].hasSwitch());
  EXPECT_FALSE(front[0].rows[0].isOn());
  EXPECT_TRUE(pages::back());
  EXPECT_EQ(pages::titleOf(pages::topPage()), "Settings");
  EXPECT_FALSE(pages::back());
}

TEST_F(InstalledPane, HasItsTextsOnAPhoneWithoutAFunction) {
  // It is then loaded as a copy in memory.
  start("com.apple.Preferences", host::ProcessKind::application, {}, {"LCPParseColorString"});
  load();
  pages::open();
  pages::press(pages::sections()[0].rows[0]);
  EXPECT_STREQ(class_getName(pages::topPage()->isa), "VNXFrontPage");
  const auto front = pages::sections();
  ASSERT_FALSE(front.empty());
  EXPECT_EQ(front[0].rows[0].title(), "Enabled");
}

TEST_F(InstalledPane, FindsItsPlaceBehindLargerClasses) {
  host::ProcessOptions options;
  options.bundle = "com.apple.Preferences";
  options.root = folder.path();
  host::startProcess(options);
  // Those of a later system, of which the pane knows nothing.
  host::runtime::growClass("PSListController", 64);
  host::runtime::growClass("PSTableCell", 40);
  pages::open();
  pages::press(pages::sections()[0].rows[0]);
  EXPECT_STREQ(class_getName(pages::topPage()->isa), "VNXFrontPage");
  const auto front = pages::sections();
  ASSERT_GT(front.size(), 2U);
  EXPECT_EQ(front[0].rows[0].title(), "Enabled");
  EXPECT_EQ(front[2].rows[0].title(), "Status Bar");
}

}  // namespace
