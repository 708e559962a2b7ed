#include "suite/DoubleArray.h"

#include <gtest/gtest.h>

#include "suite/PolylineVector.h"

TEST(CdoubleArray, GrowsAndShrinksLikeTheFrameworkArray) {
  CdoubleArray a;
  EXPECT_EQ(a.Add(1.5), 0);
  EXPECT_EQ(a.Add(2.5), 1);
  a.SetSize(4);
  EXPECT_EQ(a, (CdoubleArray{1.5, 2.5, 0, 0}));
  a.InsertAt(1, 9, 2);
  EXPECT_EQ(a, (CdoubleArray{1.5, 9, 9, 2.5, 0, 0}));
  a.RemoveAt(4, 10);
  EXPECT_EQ(a, (CdoubleArray{1.5, 9, 9, 2.5}));
  EXPECT_EQ(a.Append(a), 4);
  EXPECT_EQ(a.GetSize(), 8);
  EXPECT_EQ(a.GetUpperBound(), 7);
  a.SetSize(-3);
  EXPECT_TRUE(a.IsEmpty());
  EXPECT_EQ(a.GetData(), nullptr);
}

TEST(CdoubleArray, IndexOutOfRangeReadsZeroAndWritesNowhere) {
  CdoubleArray a{1, 2, 3};
  EXPECT_EQ(a.GetAtC(-1), 0.0);
  EXPECT_EQ(a.GetAt(3), 0.0);
  a.SetAt(3, 7);
  a[-1] = 8;
  a[5] += 4;
  EXPECT_EQ(a[5], 0.0);
  a[1] = 20;
  EXPECT_EQ(a, (CdoubleArray{1, 20, 3}));
  const CdoubleArray& c = a;
  EXPECT_EQ(c[2], 3.0);
  a.RemoveAt(3);
  a.RemoveAt(-1);
  EXPECT_EQ(a.GetSize(), 3);
}

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
