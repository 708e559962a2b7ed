#include "geometry/RectDouble.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

std::array<double, 4> Edges(const CRectDouble& r) { return {r.Left(), r.Top(), r.Right(), r.Bottom()}; }

const double kNan = std::numeric_limits<double>::quiet_NaN();

}  // namespace

// Left and top are inside and widened by the tolerance; right and bottom are outside
// together with a band of the tolerance inside them.
TEST(CRectDouble, PtInRectKeepsLeftAndTopButNotRightAndBottom) {
  const CRectDouble r(0, 10, 10, 0);
  const struct {
    double x, y;
    int inside;
  } cases[] = {{0, 10, 1},          {10, 5, 0},       {5, 0, 0},      {-1e-10, 5, 1},    {5, 10 + 1e-10, 1},
               {10 - 1e-10, 5, 0}, {5, 1e-10, 0},    {-2e-10, 5, 0}, {9.9999, 1e-9, 1}, {kNan, 5, 0}};
  for (const auto& c : cases) EXPECT_EQ(r.PtInRect(CPointDouble(c.x, c.y, 77)), c.inside) << c.x << ", " << c.y;
  EXPECT_EQ(r.IsTriangleInside({0, 10, 0}, {5, 5, 0}, {9, 1, 0}), 1);
  EXPECT_EQ(r.IsTriangleInside({0, 10, 0}, {5, 5, 0}, {10, 1, 0}), 0);
}

TEST(CRectDouble, EmptyOnlyWhenFlatInBothDirections) {
  EXPECT_EQ(CRectDouble(0, 10, 0, 0).IsRectEmpty(), 0);
  EXPECT_EQ(CRectDouble(0, 0, 10, 0).IsRectEmpty(), 0);
  EXPECT_EQ(CRectDouble(3, 4, 3 + 1e-10, 4 - 1e-10).IsRectEmpty(), 1);
}

TEST(CRectDouble, IntersectionMustExceedThisTolerance) {
  CRectDouble a(0, 10, 10, 0);
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(10, 10, 20, 0)), 0);  // shared edge
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(0, 20, 10, 10)), 0);
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(9, 10, 20, 0)), 1);
  EXPECT_EQ(a.IsIntersectRect(CRectDouble(2, 8, 3, 7)), 1);  // inside
  a.SetTolerance(0.5);
  const CRectDouble b(9.75, 10, 20, 0);
  EXPECT_EQ(a.IsIntersectRect(b), 0);  // overlap 0.25 is within a's tolerance
  EXPECT_EQ(b.IsIntersectRect(a), 1);
}

TEST(CRectDouble, EqualityUsesThisTolerance) {
  CRectDouble loose(0, 10, 10, 0);
  loose.SetTolerance(0.5);
  const CRectDouble shifted(0.375, 10, 10, 0);
  EXPECT_TRUE(loose == shifted);
  EXPECT_FALSE(shifted == loose);
  EXPECT_FALSE(loose == CRectDouble(0, 10, 10, -0.75));
}

TEST(CRectDouble, SetRectStoresInvertedValuesAndReportsThem) {
  CRectDouble r;
  EXPECT_EQ(r.SetRect(5, 0, 0, 5), 0);
  EXPECT_EQ(Edges(r), (std::array<double, 4>{5, 0, 0, 5}));
  EXPECT_EQ(r.SetRect(1, 0, 3, 2), 0);
  EXPECT_EQ(r.SetRect(1 + 1e-10, 2, 1, 2 + 1e-10), 1);  // inverted by no more than the tolerance
}

TEST(CRectDouble, CenterInflateAndSquareFromOffset) {
  CRectDouble r(-1, 8, 4, 2);
  const CPointDouble c = r.CenterPoint();
  EXPECT_EQ((std::array{c.x, c.y, c.z}), (std::array<double, 3>{1.5, 5, 0}));
  r.InflateRect(1, -2);
  EXPECT_EQ(Edges(r), (std::array<double, 4>{-2, 6, 5, 4}));
  for (const double nearZero : {0.0, 5e-13, -1e-12}) EXPECT_EQ(r.SetFromCenterOffset(1, 2, nearZero), 0);
  EXPECT_EQ(Edges(r), (std::array<double, 4>{-2, 6, 5, 4}));
  EXPECT_EQ(r.SetFromCenterOffset(1, 2, -3), 1);
  EXPECT_EQ(Edges(r), (std::array<double, 4>{-2, 5, 4, -1}));
  EXPECT_EQ(r.SetFromCenterOffset(0, 0, 2e-12), 1);
  EXPECT_EQ(r.Right(), 2e-12);
}

TEST(CRectDouble, ToCRectRoundsHalvesAwayFromZeroAndSaturates) {
  EXPECT_EQ(CRectDouble(0.5, 2.5, -0.5, -2.5).ToCRect(), CRect(1, 3, -1, -3));
  EXPECT_EQ(CRectDouble(1.4999999999999998, 10.5000001, -7.49, 2147483646.6).ToCRect(), CRect(1, 11, -7, 2147483647));
  EXPECT_EQ(CRectDouble(1e20, -1e20, kNan, 2147483647.5).ToCRect(), CRect(2147483647, -2147483647 - 1, 0, 2147483647));
}
