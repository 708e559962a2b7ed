#include "suite/CoordBaseX.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(CCoordBaseX, TurnsDrawingCoordinatesIntoRoundedVertexUnits) {
  POINT p{7, 7};
  // The default base takes hundredths, and gives back every vertex that was exported.
  for (const LONG v : {-86, 87, 100, -100, 2147483647, -2147483647 - 1}) {
    ASSERT_EQ(CCoordBaseX::ToItem(nullptr, v / 100.0, v * 0.01, &p), 1) << v;
    EXPECT_EQ(p.x, v);
    EXPECT_EQ(p.y, v);
  }
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 0.005, -0.005, &p), 1);  // halves away from zero
  EXPECT_EQ(p.x, 1);
  EXPECT_EQ(p.y, -1);

  const CCoordBaseX base(1000.0, 2000.0, 10.0);  // tenths of a drawing unit, around a point
  EXPECT_EQ(base.ToItem(1012.34, 1995.0, &p), 1);
  EXPECT_EQ(p.x, 123);
  EXPECT_EQ(p.y, -50);
  double x = 0, y = 0;
  base.FromItem(POINT{123, -50}, &x, &y);
  EXPECT_DOUBLE_EQ(x, 1012.3);
  EXPECT_DOUBLE_EQ(y, 1995.0);
}

TEST(CCoordBaseX, RefusesWhatNoVertexCanHold) {
  POINT p{7, 8};
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 21474836.48, 0, &p), 0);
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 0, std::nan(""), &p), 0);
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 1e308 * 10, 0, &p), 0);
  EXPECT_EQ(CCoordBaseX(0, 0, 0).ToItem(1, 1, &p), 0);
  EXPECT_EQ(CCoordBaseX(0, 0, -10).ToItem(1, 1, &p), 0);
  EXPECT_EQ(p.x, 7);
  EXPECT_EQ(p.y, 8);
  EXPECT_EQ(CCoordBaseX::ToItem(nullptr, 1, 1, nullptr), 0);
}
