// Paths of lines and arcs: filled, stroked, and as a clip.
#include <gtest/gtest.h>

#include <cmath>

#include "support/bitmaps.h"

namespace {

using test::Bytes;

constexpr CGFloat kNan = std::numeric_limits<CGFloat>::quiet_NaN();

class PathOfLines : public testing::Test {
 protected:
  static constexpr std::size_t kSide = 10;
  int alpha(std::size_t x, std::size_t y) const { return bytes_[(y * kSide + x) * 4 + 3]; }
  double covered() const {
    double sum = 0;
    for (std::size_t i = 3; i < bytes_.size(); i += 4) sum += bytes_[i] / 255.0;
    return sum;
  }
  void move(CGFloat x, CGFloat y) { CGContextMoveToPoint(context_, x, y); }
  void line(CGFloat x, CGFloat y) { CGContextAddLineToPoint(context_, x, y); }

  Bytes bytes_;
  test::Context context_{test::createContext(bytes_, kSide, kSide)};
};

TEST_F(PathOfLines, IsFilledInside) {
  move(0, 0);
  line(10, 0);
  line(10, 10);
  CGContextFillPath(context_);
  EXPECT_NEAR(covered(), 50, 0.5);
  // The origin is at the lower left.
  EXPECT_EQ(alpha(9, 8), 255);
  EXPECT_EQ(alpha(0, 0), 0);
  EXPECT_EQ(alpha(9, 2), 255);
}

TEST_F(PathOfLines, BeginsAnew) {
  move(0, 0);
  line(10, 0);
  line(10, 10);
  CGContextBeginPath(context_);
  CGContextFillPath(context_);
  EXPECT_EQ(covered(), 0);
}

TEST_F(PathOfLines, ALineWithoutABeginningIsNone) {
  line(10, 0);
  CGContextAddArcToPoint(context_, 5, 5, 9, 9, 1);
  line(10, 10);
  line(0, 10);
  CGContextFillPath(context_);
  EXPECT_EQ(covered(), 0);
}

TEST_F(PathOfLines, IsStrokedInItsColourAndWidth) {
  CGContextSetRGBFillColor(context_, 0, 1, 0, 1);
  CGContextSetRGBStrokeColor(context_, 1, 0, 0, 1);
  CGContextSetLineWidth(context_, 2);
  move(0, 5);
  line(10, 5);
  CGContextStrokePath(context_);
  EXPECT_DOUBLE_EQ(covered(), 20);
  EXPECT_EQ(Bytes(bytes_.begin() + 4 * 10 * 5, bytes_.begin() + 4 * 10 * 5 + 4),
            (Bytes{255, 0, 0, 255}));
  CGContextStrokePath(context_);
  EXPECT_DOUBLE_EQ(covered(), 20) << "the path is gone";
}

TEST_F(PathOfLines, IsStrokedInBlackAndOnePointWideAtFirst) {
  move(0, 4.5);
  line(10, 4.5);
  CGContextStrokePath(context_);
  EXPECT_DOUBLE_EQ(covered(), 10);
  EXPECT_EQ(alpha(0, 5), 255);
}

TEST_F(PathOfLines, AClosedOneHasItsLastSide) {
  move(1, 1);
  line(9, 1);
  line(9, 9);
  CGContextSetLineWidth(context_, 0);
  CGContextSetLineWidth(context_, -3);
  CGContextClosePath(context_);
  CGContextStrokePath(context_);
  EXPECT_GT(alpha(5, 4), 60);
}

TEST_F(PathOfLines, AStrokeReachesNoFurtherInAnyMode) {
  bytes_.assign(bytes_.size(), 255);
  constexpr int kCopy = 17;
  CGContextSetBlendMode(context_, CGBlendMode{kCopy});
  CGContextSetRGBStrokeColor(context_, 0, 0, 0, 0);
  CGContextSetLineWidth(context_, 2);
  move(0, 5);
  line(10, 5);
  CGContextStrokePath(context_);
  EXPECT_DOUBLE_EQ(covered(), 80);
}

TEST_F(PathOfLines, AnArcRoundsTheCorner) {
  // Both ways around.
  for (const bool clockwise : {false, true}) {
    bytes_.assign(bytes_.size(), 0);
    move(0, 0);
    if (clockwise) {
      CGContextAddArcToPoint(context_, 0, 10, 10, 10, 10);
      line(10, 0);
    } else {
      line(10, 0);
      CGContextAddArcToPoint(context_, 10, 10, 0, 10, 10);
      line(0, 10);
    }
    CGContextFillPath(context_);
    const double quarter = 100 * std::acos(-1.0) / 4;
    EXPECT_NEAR(covered(), quarter, 0.6) << clockwise;
    EXPECT_EQ(alpha(clockwise ? 0 : 9, 0), 0) << clockwise;
    EXPECT_EQ(alpha(clockwise ? 9 : 0, 9), 255) << clockwise;
  }
}

TEST_F(PathOfLines, AnArcGoesOnFromWhereItTouches) {
  CGContextSetLineWidth(context_, 1);
  move(0.5, 9.5);
  CGContextAddArcToPoint(context_, 9.5, 9.5, 9.5, 0, 2);
  CGContextStrokePath(context_);
  EXPECT_EQ(alpha(5, 0), 255);  // the line to the arc
  EXPECT_LT(alpha(9, 0), 64);   // the corner that it cuts
  EXPECT_EQ(alpha(9, 5), 0);    // it ends where it touches the second side
}

TEST_F(PathOfLines, AnArcWithoutACornerIsALine) {
  CGContextSetLineWidth(context_, 2);
  for (const CGFloat end : {10.0, -10.0}) {
    bytes_.assign(bytes_.size(), 0);
    move(0, 5);
    CGContextAddArcToPoint(context_, 6, 5, end, 5, 3);
    CGContextStrokePath(context_);
    EXPECT_DOUBLE_EQ(covered(), 12);
  }
  bytes_.assign(bytes_.size(), 0);
  move(0, 5);
  CGContextAddArcToPoint(context_, 6, 5, 6, 0, 0);
  CGContextStrokePath(context_);
  EXPECT_DOUBLE_EQ(covered(), 12);
}

TEST_F(PathOfLines, ClipsWhatIsDrawn) {
  CGContextSaveGState(context_);
  CGContextAddRect(context_, {{2, 2}, {3, 4}});
  CGContextClip(context_);
  CGContextFillRect(context_, {{0, 0}, {10, 10}});
  EXPECT_DOUBLE_EQ(covered(), 12);
  move(0, 3);
  line(10, 3);
  CGContextSetLineWidth(context_, 20);
  CGContextStrokePath(context_);
  EXPECT_DOUBLE_EQ(covered(), 12);
  CGContextRestoreGState(context_);
  CGContextFillRect(context_, {{0, 0}, {10, 10}});
  EXPECT_DOUBLE_EQ(covered(), 100);
}

TEST_F(PathOfLines, TakesStrangeNumbersAndNoContext) {
  move(0, 0);
  line(10, 0);
  for (const CGFloat strange : {kNan, test::kHuge, -test::kHuge}) {
    move(strange, 0);
    line(0, strange);
    CGContextAddArcToPoint(context_, strange, 0, 0, 1, 1);
    CGContextAddArcToPoint(context_, 1, 1, strange, 1, 1);
    CGContextAddArcToPoint(context_, 1, 1, 2, 0, strange);
    CGContextSetLineWidth(context_, strange);
  }
  CGContextAddArcToPoint(context_, 1, 1, 2, 0, -1);
  line(10, 10);
  CGContextFillPath(context_);
  EXPECT_NEAR(covered(), 50, 0.5);
  CGContextBeginPath(nullptr);
  CGContextMoveToPoint(nullptr, 0, 0);
  CGContextAddLineToPoint(nullptr, 0, 0);
  CGContextAddArcToPoint(nullptr, 0, 0, 1, 1, 1);
  CGContextClosePath(nullptr);
  CGContextClip(nullptr);
  CGContextSetLineWidth(nullptr, 1);
  CGContextStrokePath(nullptr);
  CGContextSetRGBStrokeColor(nullptr, 0, 0, 0, 1);
  CGContextSetStrokeColorWithColor(context_, nullptr);
}

}  // namespace
