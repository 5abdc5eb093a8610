// Text and symbols are noted with what they lie on.
#include <gtest/gtest.h>

#include <optional>

#include "drawing/ink.h"
#include "drawing/text.h"

using namespace varnix::drawing;

namespace {

constexpr char kOne[] = "A color", kOther[] = "B color";

Color dyed(unsigned value, const char* surface = kOne) {
  Color color = rgb(value);
  color.dyes = surface;
  return color;
}

class Noting : public testing::Test {
 protected:
  Noting() { canvas.note(&inks); }

  void fillAll(const Color& color) { canvas.fill({0, 0, 100, 100}, color); }
  void block(const Box& box, const Color& color, InkKind kind = InkKind::symbol) {
    const Ink ink(canvas, box, color, kind);
    canvas.fill(box, color);
  }
  std::optional<Place> worst(const char* surface = kOne) const {
    for (const Reading& reading : inks.readings(canvas)) {
      if (reading.surface == surface) return reading.worst;
    }
    return {};
  }

  Inks inks;
  Canvas canvas{100, 100, 2};
};

TEST_F(Noting, TheContrastIsThatWithWhatWasThereBefore) {
  fillAll(rgb(0xffffff));
  block({10, 20, 30, 20}, dyed(0x777777));
  fillAll(kBlack.withAlpha(0));
  const auto place = worst();
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->contrast, 4.478, 0.001) << "of #777777 on white";
  EXPECT_EQ(place->kind, InkKind::symbol);
  EXPECT_EQ(place->mark.x, 10);
  EXPECT_EQ(place->mark.bottom(), 40);
  EXPECT_EQ(place->box.width, 4);
}

TEST_F(Noting, InkOnItselfHasNone) {
  fillAll(rgb(0x123456));
  block({10, 20, 30, 20}, dyed(0x123456));
  ASSERT_TRUE(worst());
  EXPECT_DOUBLE_EQ(worst()->contrast, 1);
}

TEST_F(Noting, TheWorstPlaceDecidesAndIsFound) {
  fillAll(rgb(0xffffff));
  canvas.fill({32, 0, 8, 100}, rgb(0x666666));
  block({10, 20, 60, 8}, dyed(0x000000));
  ASSERT_TRUE(worst());
  EXPECT_NEAR(worst()->contrast, 3.66, 0.01);
  EXPECT_GE(worst()->box.x, 32);
  EXPECT_LE(worst()->box.right(), 40);
  EXPECT_EQ(worst()->ground, rgb(0x666666));
}

TEST_F(Noting, APixelDoesNotDecide) {
  fillAll(rgb(0xffffff));
  canvas.fill({21, 21, 0.5, 0.5}, rgb(0x000000));
  block({10, 20, 30, 20}, dyed(0x000000));
  ASSERT_TRUE(worst());
  EXPECT_GT(worst()->contrast, 20);
}

TEST_F(Noting, AnEdgeThatReachesIntoASquareDoesNotDecide) {
  fillAll(rgb(0xffffff));
  canvas.fill({0, 40, 100, 20}, rgb(0x000000));
  block({10, 20, 3, 20.5}, dyed(0x000000));
  ASSERT_TRUE(worst());
  EXPECT_GT(worst()->contrast, 20);
}

TEST_F(Noting, ASmallSymbolIsOnePlace) {
  fillAll(rgb(0xffffff));
  block({20, 20, 1, 1}, dyed(0x777777));
  ASSERT_TRUE(worst());
  EXPECT_NEAR(worst()->contrast, 4.478, 0.001);
  EXPECT_EQ(worst()->box.width, 1);
}

TEST_F(Noting, TranslucentInkCountsAsItIsSeen) {
  fillAll(rgb(0xffffff));
  block({10, 20, 30, 20}, dyed(0x000000).withAlpha(0.5));
  ASSERT_TRUE(worst());
  EXPECT_NEAR(worst()->contrast, 3.95, 0.01);
  EXPECT_NEAR(worst()->ink.red, 0.5, 0.01);
}

TEST_F(Noting, WhatIsCoveredLaterDoesNotCount) {
  fillAll(rgb(0xffffff));
  block({10, 20, 30, 20}, dyed(0xffffff));
  block({50, 20, 30, 20}, dyed(0x000000));
  canvas.fill({0, 0, 45, 100}, rgb(0x00ff00));
  ASSERT_TRUE(worst());
  EXPECT_NEAR(worst()->contrast, 21, 0.01);
  fillAll(kBlack.withAlpha(0.4));
  EXPECT_FALSE(worst()) << "behind a question nothing can be read";
}

TEST_F(Noting, InkCountsForWhatItLiesOnToo) {
  fillAll(rgb(0x808080));
  {
    const On on(canvas, kOther);
    block({10, 20, 30, 20}, rgb(0xffffff));
    const Inactive inactive(canvas);
    block({50, 20, 30, 20}, rgb(0x808080));
  }
  block({10, 60, 30, 20}, rgb(0x808080));
  EXPECT_FALSE(worst()) << "nothing dyes it";
  ASSERT_TRUE(worst(kOther));
  EXPECT_NEAR(worst(kOther)->contrast, 3.95, 0.01);
}

TEST_F(Noting, TextIsNotedRunByRun) {
  fillAll(rgb(0xffffff));
  const Paragraph paragraph{
      {{"MM ", dyed(0x000000)}, {"MM ", rgb(0xeeeeee)}, {"MM", dyed(0xdddddd, kOther)}},
      14,
      18,
      90};
  drawParagraph(canvas, {4, 10}, paragraph);
  ASSERT_TRUE(worst() && worst(kOther));
  EXPECT_NEAR(worst()->contrast, 21, 0.01);
  EXPECT_NEAR(worst(kOther)->contrast, 1.36, 0.01);
  EXPECT_LT(worst()->mark.right(), worst(kOther)->mark.x);
  EXPECT_EQ(worst()->kind, InkKind::text);
}

TEST_F(Noting, LargeTextIsLarge) {
  fillAll(rgb(0xffffff));
  drawText(canvas, {4, 40}, "M", {24, dyed(0x000000)});
  drawText(canvas, {40, 40}, "M", {19, dyed(0x000000, kOther), Weight::bold});
  EXPECT_EQ(worst()->kind, InkKind::largeText);
  EXPECT_EQ(worst(kOther)->kind, InkKind::largeText);
}

TEST_F(Noting, ThePictureStaysAlmostTheSame) {
  Canvas plain(100, 100, 2);
  for (Canvas* on : {&plain, &canvas}) {
    on->fill({0, 0, 100, 100}, rgb(0x336699));
    drawParagraph(*on, {4, 10},
                  {{{"Some ", dyed(0xffeb3b)}, {"words", rgb(0x000000)}}, 14, 18, 90});
    drawText(*on, {4, 60}, "more", {20, dyed(0x000000).withAlpha(0.6)});
  }
  const auto* one = cairo_image_surface_get_data(plain.surface().get());
  const auto* other = cairo_image_surface_get_data(canvas.surface().get());
  for (int i = 0; i < 200 * 200 * 4; ++i) ASSERT_LE(std::abs(one[i] - other[i]), 3) << i;
}

}  // namespace
