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

}  // namespace
