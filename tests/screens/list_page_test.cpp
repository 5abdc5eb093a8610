// Pages of the Settings application: what is carried from process to process, and where it lies.
#include <gtest/gtest.h>

#include "drawing/picture.h"
#include "gallery/screens/list_drawing.h"
#include "gallery/screens/list_layout.h"
#include "gallery/screens/screen.h"

using namespace varnix::screens;

namespace {

/// A disc of 29 points at two pixels a point.
std::string discPicture() {
  const Canvas canvas(29, 29, 2);
  canvas.fill({0, 0, 29, 29}, rgb(0xde3027));
  return encodePng(canvas.surface());
}

ListRow titled(const char* title, const char* subtitle = "") {
  ListRow row;
  row.title = title;
  row.subtitle = subtitle;
  return row;
}

/// A page on which every field has a value.
ListPage fullPage() {
  ListPage page;
  page.title = "Varnix";
  page.back = "Settings";
  page.statusBar = rgb(0x102030);
  page.bar = page.titleColor = rgb(0xde3027);
  page.action = {discPicture(), 2, {}, {}};
  ListRow toggle = titled("Enabled");
  toggle.isOn = true;
  toggle.switchOn = rgb(0xde3027);
  ListRow choice = titled("Colour from");
  choice.value = "My colour";
  choice.opens = true;
  ListRow color = titled("My colour", "#de3027");
  color.disc = rgb(0xde3027);
  ListRow album = titled("Album art");
  album.isOn = false;
  ListRow element = titled("Status Bar", "Varnix colour");
  element.image = {discPicture(), 2, {}, {}};
  element.opens = true;
  ListRow grey = element;
  grey.title = "Folders";
  grey.isDisabled = true;
  ListRow button = titled("Copy Settings");
  button.titleColor = rgb(0xde3027);
  ListRow ticked = titled("Own colour");
  ticked.isTicked = true;
  ticked.tickColor = rgb(0xde3027);
  ListRow tall;
  tall.height = 120;
  tall.image = {discPicture(), 2, 80, 20};
  page.groups = {{"",
                  "Applications take notice of this switch when they start, the home screen when "
                  "SpringBoard restarts. Colours change at once.",
                  {toggle}},
                 {"Colour", "", {choice, color, album}},
                 {"Elements", "", {element, grey, button, ticked, tall}}};
  return page;
}

TEST(ListPage, IsTheSameAfterItWasCarried) {
  const ListPage page = fullPage();
  const Answers answers = answersOf(page);
  EXPECT_EQ(answersOf(pageOf(answers)), answers);
  const ListPage carried = pageOf(answers);
  EXPECT_EQ(carried.groups[2].rows[0].image.png, discPicture());
  EXPECT_EQ(carried.groups[1].rows[2].isOn, false);
  EXPECT_FALSE(carried.groups[1].rows[0].isOn);
  EXPECT_EQ(carried.groups[2].rows[4].height, 120);
  EXPECT_FALSE(carried.search);
}

TEST(ListPage, LiesWhereThePlatformPutsIt) {
  const Canvas canvas(kWidth, kHeight, 1);
  ListPage page = fullPage();
  const ListLayout placed = layOut(canvas, page);
  ASSERT_EQ(placed.rows.size(), 9U);
  EXPECT_EQ(placed.rows[0].box.y, 64 + 35);
  EXPECT_EQ(placed.rows[0].box.height, 44);
  ASSERT_EQ(placed.footers.size(), 1U);
  EXPECT_EQ(placed.footers[0].at.y, 99 + 44 + 8);
  // Three lines of it, then a header.
  constexpr double kColors = 151 + 3 * 16 + 7.5 + 38;
  EXPECT_EQ(placed.rows[1].box.y, kColors);
  EXPECT_EQ(placed.headers[0].at.y, kColors - 8);
  EXPECT_EQ(placed.rows[4].box.y, kColors + 3 * 44 + 17.5 + 38);
  EXPECT_EQ(placed.rows[8].box.height, 120);
  EXPECT_TRUE(placed.rows[1].isFirst);
  EXPECT_FALSE(placed.rows[1].isLast);
  EXPECT_TRUE(placed.rows[3].isLast);
  page.search = "Search";
  EXPECT_EQ(layOut(canvas, page).rows[0].box.y, 64 + 44 + 35);
}

TEST(ListPage, NamesTextsThatDoNotFit) {
  const Canvas canvas(kWidth, kHeight, 1);
  ListPage page = fullPage();
  EXPECT_EQ(textsTooLong(canvas, page), std::vector<std::string>());
  ListRow& choice = page.groups[1].rows[0];
  choice.title = "A colour that comes from";
  choice.value = "the application's icon";
  page.groups[2].rows[0].subtitle = std::string(80, 'm');
  page.title = "The page of a title that is long";
  EXPECT_EQ(textsTooLong(canvas, page),
            (std::vector{page.title, choice.title, page.groups[2].rows[0].subtitle}));
}

std::string drawn(const ListPage& page) {
  const Canvas canvas(kWidth, kHeight, 1);
  drawListPage(canvas, page);
  return encodePng(canvas.surface());
}

TEST(ListPage, LeavesOutPicturesThatAreNone) {
  ListPage without = fullPage(), broken = fullPage();
  without.action.png = "";
  for (const char* bytes : {"no picture", "\x89PNG\r\n\x1a\n"}) {
    broken.action.png = bytes;
    EXPECT_EQ(drawn(broken), drawn(without));
  }
  EXPECT_NE(drawn(fullPage()), drawn(without));
}

int lightness(const Canvas& canvas, int x, int y) {
  const auto* pixels = cairo_image_surface_get_data(canvas.surface().get());
  return pixels[y * cairo_image_surface_get_stride(canvas.surface().get()) + 4 * x];
}

TEST(ListPage, IsDimmedBelowAnAlert) {
  ListPage page = fullPage();
  page.alert = {"Use Ocean?", "This will replace your current settings.", {"Cancel", "Replace"}};
  const Canvas canvas(kWidth, kHeight, 1);
  drawListPage(canvas, page);
  // The page's ground, at 60 %; the alert's own, 270 points wide.
  EXPECT_NEAR(lightness(canvas, 4, 80), 0xf4 * 0.6, 2);
  EXPECT_GT(lightness(canvas, 60, 333), 0xf0);
  EXPECT_LT(lightness(canvas, 50, 333), 0xa0);
  const std::string asked = drawn(page);
  for (std::string* text : {&page.alert.title, &page.alert.message, &page.alert.buttons[1]}) {
    ListPage other = page;
    *text += " now";
    EXPECT_NE(drawn(page), asked) << *text;
    page = other;
  }
  // Side by side, or one below the other.
  page.alert.buttons = {"No", "Yes", "Perhaps"};
  EXPECT_NE(drawn(page), asked);
  page.alert = {};
  EXPECT_EQ(drawn(page), drawn(fullPage()));
}

TEST(ListPage, ShowsItsField) {
  ListPage page = fullPage();
  page.search = "Search";
  const std::string searched = drawn(page);
  page.search = "Suchen";
  EXPECT_NE(drawn(page), searched);
}

}  // namespace
