#include <gtest/gtest.h>

#include <cmath>

#include "DrawTestSupport.h"
#include "linestyle/LineItem.h"

using namespace drawtest;

TEST(SideDoubleLine, ResultCountsSegmentsWithAtLeastOneAndZeroOffsetLeavesTheOutputAlone) {
  const double x[] = {0, 10, 20, 30, 40};
  const double y[] = {0, 5, 0, 0, 0};
  double ox[5] = {7, 7, 7, 7, 7}, oy[5] = {8, 8, 8, 8, 8};
  EXPECT_EQ(CLineItem::SideDoubleLine(x, y, ox, oy, 3, 0), 0);
  EXPECT_EQ(ox[1], 7.0);
  EXPECT_EQ(oy[2], 8.0);
  EXPECT_EQ(CLineItem::CenteredDoubleLine(x, y, ox, oy, ox, oy, 5, 0), 0);

  EXPECT_EQ(CLineItem::SideDoubleLine(x, y, ox, oy, 5, 10), 4);
  EXPECT_EQ(CLineItem::SideDoubleLine(x, y, ox, oy, 2, 10), 1);
  EXPECT_EQ(CLineItem::SideDoubleLine(x, y, ox, oy, 0, 10), 1);
  // A single point has no direction to offset along: it stays put.
  const double px[] = {3}, py[] = {4};
  EXPECT_EQ(CLineItem::SideDoubleLine(px, py, ox, oy, 1, 10), 1);
  EXPECT_EQ(ox[0], 3.0);
  EXPECT_EQ(oy[0], 4.0);
  double a1[1], b1[1], a2[1], b2[1];
  EXPECT_EQ(CLineItem::CenteredDoubleLine(px, py, a1, b1, a2, b2, 1, 10), 1);
  EXPECT_EQ(a2[0], 3.0);
  EXPECT_EQ(b1[0], 4.0);
}

TEST(SideDoubleLine, RightAngleCornerIsMitredAtTheOffsetFromBothLegs) {
  // East, then north (a left turn): the right-hand side is outside the corner.
  const double x[] = {0, 100, 100};
  const double y[] = {0, 0, 100};
  const double d = 100 * kTenth;  // 10.000000149011612
  double ox[3], oy[3];
  ASSERT_EQ(CLineItem::SideDoubleLine(x, y, ox, oy, 3, 100), 2);
  EXPECT_NEAR(ox[0], 0, 1e-14);
  EXPECT_EQ(oy[0], -d);
  EXPECT_NEAR(ox[1], 100 + d, 1e-12);
  EXPECT_NEAR(oy[1], -d, 1e-12);
  EXPECT_EQ(ox[2], 100 + d);
  EXPECT_NEAR(oy[2], 100, 1e-12);

  // A negative offset is the inside of the same corner.
  ASSERT_EQ(CLineItem::SideDoubleLine(x, y, ox, oy, 3, -100), 2);
  EXPECT_NEAR(ox[1], 100 - d, 1e-12);
  EXPECT_NEAR(oy[1], d, 1e-12);
}

TEST(SideDoubleLine, NearlyReversingCornerUsesThePlainOffsetWhereTheCentredFormDividesBySine) {
  // Out along x and back, 0.5 apart at the far end: half the corner's angle has a sine of
  // about 0.0025, below the 0.01 limit.
  const double x[] = {0, 100, 0};
  const double y[] = {0, 0, 0.5};
  const double d = 100 * kTenth;
  const double sineOfHalf = std::sin(std::atan2(0.5, 100) / 2);

  double sx[3], sy[3];
  CLineItem::SideDoubleLine(x, y, sx, sy, 3, 100);
  EXPECT_NEAR(std::hypot(sx[1] - 100, sy[1]), d, 1e-9);

  double x1[3], y1[3], x2[3], y2[3];
  ASSERT_EQ(CLineItem::CenteredDoubleLine(x, y, x1, y1, x2, y2, 3, 100), 2);
  const double mitre = d / sineOfHalf;  // about 4000 units out
  EXPECT_NEAR(std::hypot(x1[1] - 100, y1[1]), mitre, mitre * 1e-9);
  // The two sides mirror each other through every point.
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(x1[i] + x2[i], 2 * x[i], 1e-9);
    EXPECT_NEAR(y1[i] + y2[i], 2 * y[i], 1e-9);
  }
  // At the ends the centred form uses d as the one-sided form does.
  EXPECT_EQ(x1[0], sx[0]);
  EXPECT_EQ(y1[0], sy[0]);
  EXPECT_EQ(y1[2], sy[2]);

  // A full reversal stays bounded one-sided; the centred form has no finite mitre.
  const double flat[] = {0, 0, 0};
  CLineItem::SideDoubleLine(x, flat, sx, sy, 3, 100);
  EXPECT_NEAR(std::hypot(sx[1] - 100, sy[1]), d, 1e-9);
  CLineItem::CenteredDoubleLine(x, flat, x1, y1, x2, y2, 3, 100);
  EXPECT_FALSE(std::isfinite(x1[1]) && std::isfinite(y1[1]));
}
