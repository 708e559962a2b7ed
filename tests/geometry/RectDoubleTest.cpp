#include "geometry/RectDouble.h"

#include <gtest/gtest.h>

#include <limits>

TEST(CRectDouble, PtInRectKeepsLeftAndTopButNotRightAndBottom) {
  const CRectDouble r(0, 10, 10, 0);
  EXPECT_EQ(r.PtInRect(0, 10), 1);
  EXPECT_EQ(r.PtInRect(10, 5), 0);
  EXPECT_EQ(r.PtInRect(5, 0), 0);
  EXPECT_EQ(r.PtInRect(-5e-11, 5), 1);
  EXPECT_EQ(r.PtInRect(5, 10 + 5e-11), 1);
  EXPECT_EQ(r.PtInRect(10 - 5e-11, 5), 0);
  EXPECT_EQ(r.PtInRect(5, 5e-11), 0);
  EXPECT_EQ(r.PtInRect(-2e-10, 5), 0);
  EXPECT_EQ(r.PtInRect(CPointDouble(9.9999, 1e-9, 77)), 1);
  EXPECT_EQ(r.PtInRect(std::numeric_limits<double>::quiet_NaN(), 5), 0);
}

TEST(CRectDouble, IsTriangleInsideNeedsAllThreeVertices) {
  const CRectDouble r(0, 10, 10, 0);
  EXPECT_EQ(r.IsTriangleInside({0, 10, 0}, {5, 5, 0}, {9, 1, 0}), 1);
  EXPECT_EQ(r.IsTriangleInside({0, 10, 0}, {5, 5, 0}, {10, 1, 0}), 0);
}

TEST(CRectDouble, EmptyOnlyWhenFlatInBothDirections) {
  EXPECT_EQ(CRectDouble(0, 10, 0, 0).IsRectEmpty(), 0);
  EXPECT_EQ(CRectDouble(0, 0, 10, 0).IsRectEmpty(), 0);
  EXPECT_EQ(CRectDouble(3, 4, 3, 4).IsRectEmpty(), 1);
  EXPECT_EQ(CRectDouble(3, 4, 3 + 1e-10, 4 - 1e-10).IsRectEmpty(), 1);
  EXPECT_EQ(CRectDouble().IsRectEmpty(), 1);
}

TEST(CRectDouble, IntersectionMustExceedThisTolerance) {
  CRectDouble a(0, 10, 10, 0);
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(10, 10, 20, 0)), 0);  // shared edge
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(0, 20, 10, 10)), 0);
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(9, 10, 20, 0)), 1);
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(2, 8, 3, 7)), 1);  // inside
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(-5, 10, -1, 0)), 0);

  a.SetTolerance(0.5);
  CRectDouble b(9.75, 10, 20, 0);
  EXPECT_EQ(a.IsIntersectRect(b), 0);  // overlap 0.25 is within a's tolerance
  EXPECT_EQ(b.IsIntersectRect(a), 1);
}

TEST(CRectDouble, SetRectStoresInvertedValuesAndReportsThem) {
  CRectDouble r;
  EXPECT_EQ(r.SetRect(5, 0, 0, 5), 0);
  EXPECT_EQ(r.Left(), 5);
  EXPECT_EQ(r.Top(), 0);
  EXPECT_EQ(r.Right(), 0);
  EXPECT_EQ(r.Bottom(), 5);
  EXPECT_EQ(r.Width(), -5);
  EXPECT_EQ(r.Height(), -5);
  EXPECT_EQ(r.SetRect(1, 0, 3, 2), 0);
  EXPECT_EQ(r.SetRect(1 + 1e-10, 2, 1, 2 + 1e-10), 1);  // inverted by no more than the tolerance
  EXPECT_EQ(r.SetRect(-1, 8, 4, 2), 1);
  EXPECT_EQ(r.Width(), 5);
  EXPECT_EQ(r.Height(), 6);
}

TEST(CRectDouble, CenterInflateAndSquareFromOffset) {
  CRectDouble r(-1, 8, 4, 2);
  const CPointDouble c = r.CenterPoint();
  EXPECT_EQ(c.x, 1.5);
  EXPECT_EQ(c.y, 5);
  EXPECT_EQ(c.z, 0);
  EXPECT_EQ(c.m_nTag1, -1);
  r.InflateRect(1, -2);
  EXPECT_TRUE(r == CRectDouble(-2, 6, 5, 4));

  const CRectDouble before = r;
  EXPECT_EQ(r.SetFromCenterOffset(1, 2, 0), 0);
  EXPECT_EQ(r.SetFromCenterOffset(1, 2, 5e-13), 0);
  EXPECT_EQ(r.SetFromCenterOffset(1, 2, -1e-12), 0);
  EXPECT_TRUE(r == before);
  EXPECT_EQ(r.SetFromCenterOffset(1, 2, -3), 1);
  EXPECT_EQ(r.Left(), -2);
  EXPECT_EQ(r.Top(), 5);
  EXPECT_EQ(r.Right(), 4);
  EXPECT_EQ(r.Bottom(), -1);
  EXPECT_EQ(r.SetFromCenterOffset(0, 0, 2e-12), 1);
  EXPECT_EQ(r.Right(), 2e-12);
}

TEST(CRectDouble, EqualityUsesThisTolerance) {
  CRectDouble loose(0, 10, 10, 0);
  loose.SetTolerance(0.5);
  const CRectDouble shifted(0.375, 10, 10, 0);
  EXPECT_TRUE(loose == shifted);
  EXPECT_FALSE(shifted == loose);
  EXPECT_FALSE(loose == CRectDouble(0, 10, 10, -0.75));
}

TEST(CRectDouble, ToCRectRoundsHalvesAwayFromZeroWithoutFlipping) {
  const CRect rc = CRectDouble(0.5, 2.5, -0.5, -2.5).ToCRect();
  EXPECT_EQ(rc.left, 1);
  EXPECT_EQ(rc.top, 3);
  EXPECT_EQ(rc.right, -1);
  EXPECT_EQ(rc.bottom, -3);

  const CRect near = CRectDouble(1.4999999999999998, 10.5000001, -7.49, 2147483646.6).ToCRect();
  EXPECT_EQ(near, CRect(1, 11, -7, 2147483647));

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const CRect wild = CRectDouble(1e20, -1e20, nan, 2147483647.5).ToCRect();
  EXPECT_EQ(wild, CRect(2147483647, -2147483647 - 1, 0, 2147483647));
}

TEST(CRectDouble, FromCRectKeepsTheTolerance) {
  CRectDouble r;
  r.SetTolerance(0.25);
  r.FromCRect(CRect(-3, 7, 12, -4));
  EXPECT_EQ(r.Left(), -3);
  EXPECT_EQ(r.Top(), 7);
  EXPECT_EQ(r.Right(), 12);
  EXPECT_EQ(r.Bottom(), -4);
  EXPECT_EQ(r.GetTolerance(), 0.25);
}
