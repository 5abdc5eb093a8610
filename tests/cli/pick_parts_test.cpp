// Parts of varnix pick's cards: contrast, and text from outside.
#include <gtest/gtest.h>

#include "pick/color.h"
#include "pick/displayed_text.h"

namespace pick = varnix::cli::pick;

namespace {

constexpr pick::Color kWhite{255, 255, 255};
constexpr pick::Color kBlack{0, 0, 0};

TEST(PickParts, ColorsAsText) {
  EXPECT_EQ(pick::hex({0x1e, 0x88, 0xe5}), "#1e88e5ff");
  EXPECT_EQ(pick::hex({0, 1, 2, 3}), "#00010203");
}

TEST(PickParts, ContrastIsTheOneOfTheGuidelines) {
  EXPECT_DOUBLE_EQ(pick::contrastRatio(kBlack, kWhite), 21);
  EXPECT_DOUBLE_EQ(pick::contrastRatio(kWhite, kBlack), 21);
  EXPECT_DOUBLE_EQ(pick::contrastRatio(kWhite, kWhite), 1);
  // The two greys on either side of 4.5, the guidelines' limit for text.
  EXPECT_NEAR(pick::contrastRatio({0x76, 0x76, 0x76}, kWhite), 4.54, 0.005);
  EXPECT_NEAR(pick::contrastRatio({0x77, 0x77, 0x77}, kWhite), 4.48, 0.005);
  EXPECT_NEAR(pick::contrastRatio({255, 0, 0}, kWhite), 4.00, 0.005);
  EXPECT_NEAR(pick::contrastRatio({0, 0, 255}, kWhite), 8.59, 0.005);
  EXPECT_NEAR(pick::contrastRatio({0, 255, 0}, kWhite), 1.37, 0.005);
}

TEST(PickParts, TranslucentColorsAreSeenOnTheirGround) {
  EXPECT_EQ(pick::laidOn(kWhite, {0, 0, 0, 0}), kWhite);
  EXPECT_EQ(pick::laidOn(kWhite, {10, 20, 30}), (pick::Color{10, 20, 30}));
  EXPECT_EQ(pick::laidOn(kWhite, {0, 0, 0, 51}), (pick::Color{204, 204, 204}));
}

TEST(PickParts, TextFromOutsideIsMadeFitToBeDrawn) {
  EXPECT_EQ(pick::displayedText(""), "");
  EXPECT_EQ(pick::displayedText("Grün 色 😀.png"), "Grün 色 😀.png");
  EXPECT_EQ(pick::displayedText("a\nb\x7F\xC2\x85z"), "a\uFFFDb\uFFFD\uFFFDz");
  EXPECT_EQ(pick::displayedText("\xFF\xE8\x89"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(pick::displayedText(std::string_view("\0x", 2)), "\uFFFDx");
}

TEST(PickParts, LongTextLosesItsMiddle) {
  auto atMost = [](std::size_t bytes) {
    return [bytes](const std::string& text) { return text.size() <= bytes; };
  };
  EXPECT_EQ(pick::shortenedInTheMiddle("abcdef", atMost(6)), "abcdef");
  EXPECT_EQ(pick::shortenedInTheMiddle("abcdefghij", atMost(7)), "ab…ij");
  EXPECT_EQ(pick::shortenedInTheMiddle("äöüßäöü", atMost(7)), "ä…ü");
  EXPECT_EQ(pick::shortenedInTheMiddle("abcdef", atMost(0)), "…");
  EXPECT_EQ(pick::shortenedInTheMiddle("", atMost(0)), "");
}

}  // namespace
