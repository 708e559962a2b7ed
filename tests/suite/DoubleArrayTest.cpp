#include "suite/DoubleArray.h"

#include <gtest/gtest.h>

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
