#include "suite/PolylineVector.h"

#include <gtest/gtest.h>

TEST(PolylineVector, ConvertsToAndFromCoordinateArrays) {
  const CdoubleArray xs{1, 2, 3};
  const CdoubleArray ys{4, 5};
  PolylineVector line(xs, ys);
  EXPECT_EQ(line, (PolylineVector{{1, 4, 0}, {2, 5, 0}}));
  line.AddPoint(7, 8, 9);
  CdoubleArray outX{99};
  CdoubleArray outY;
  line.GetXY(&outX, &outY);
  EXPECT_EQ(outX, (CdoubleArray{1, 2, 7}));
  EXPECT_EQ(outY, (CdoubleArray{4, 5, 8}));
  EXPECT_EQ(line.GetAt(2), (PolylinePoint{7, 8, 9}));
  EXPECT_EQ(line.GetAt(3), (PolylinePoint{0, 0, 0}));
  EXPECT_EQ(line.SetAt(3, {1, 1, 1}), 0);
  EXPECT_EQ(line.SetAt(0, {1, 1, 1}), 1);
  EXPECT_EQ(line.GetAt(0), (PolylinePoint{1, 1, 1}));
}
