#include "geometry/PolygonDouble.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>

namespace {

CPolygonDouble Ring(std::initializer_list<CPointDouble> corners, double tolerance = 1e-10) {
  CPolygonDouble poly;
  for (CPointDouble v : corners) {
    v.SetTolerance(tolerance);
    poly.AppendPoint(v);
  }
  return poly;
}

}  // namespace

TEST(CPolygonDouble, VerticesAreAppendedAndReadBackByIndex) {
  CPolygonDouble poly;
  CPointDouble p(9, 9, 9);
  EXPECT_EQ(poly.GetVertex(0, &p), 0);
  EXPECT_EQ(poly.GetVertexIndex(p), -1);
  EXPECT_EQ(poly.AppendPoint(1, 2, 3), 1u);
  EXPECT_EQ(poly.AppendPoint(CPointDouble(4, 5, 6)), 2u);
  EXPECT_EQ(poly.IsValid(), 0);
  EXPECT_EQ(poly.AppendPoint(1, 2, 3), 3u);  // collinear, even repeated: still valid
  EXPECT_EQ(poly.IsValid(), 1);
  EXPECT_EQ(poly.GetVertex(3, &p), 0);
  EXPECT_EQ(poly.GetVertex(1, nullptr), 0);
  ASSERT_EQ(poly.GetVertex(1, &p), 1);
  EXPECT_EQ((std::array{p.x, p.y, p.z}), (std::array<double, 3>{4, 5, 6}));
  EXPECT_EQ(p.m_nTag2, -1);
}

TEST(CPolygonDouble, GetVertexIndexMatchesWithinThePolygonsTolerance) {
  CPolygonDouble poly;
  CPointDouble loose(1, 1, 0);
  loose.SetTolerance(1.0);  // the vertex's own tolerance plays no part
  poly.AppendPoint(loose);
  poly.AppendPoint(5, 5, 0);
  poly.AppendPoint(5, 5.001, 0);
  EXPECT_EQ(poly.GetVertexIndex(CPointDouble(1.5, 1, 0)), -1);
  EXPECT_EQ(poly.GetVertexIndex(CPointDouble(5, 5.001, 0)), 2);
  poly.SetTolerance(0.5);
  EXPECT_EQ(poly.GetVertexIndex(CPointDouble(1.5, 1, 0)), 0);
  EXPECT_EQ(poly.GetVertexIndex(CPointDouble(5, 5.001, 0)), 1);  // the first match
}

// The other polygon's vertex tolerances decide, vertex by vertex in order.
TEST(CPolygonDouble, EqualityComparesInOrderWithTheOtherPolygonsVertices) {
  const CPolygonDouble a = Ring({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  EXPECT_TRUE(CPolygonDouble() == CPolygonDouble());
  EXPECT_FALSE(a == CPolygonDouble());
  EXPECT_FALSE(a == Ring({{1, 0, 0}, {0, 1, 0}, {0, 0, 0}}));  // the same ring started elsewhere
  const CPolygonDouble loose = Ring({{0.25, 0, 0}, {1, 0, 0}, {0, 1, 0}}, 0.5);
  EXPECT_TRUE(a == loose);
  EXPECT_FALSE(loose == a);
}

// Assignment takes the tolerance too, and survives assignment to itself.
TEST(CPolygonDouble, AssignmentCarriesToleranceAndVertices) {
  CPolygonDouble a = Ring({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  a.SetTolerance(0.75);
  CPolygonDouble assigned;
  assigned.AppendPoint(9, 9, 9);
  assigned = a;
  EXPECT_EQ(assigned.GetTolerance(), 0.75);
  EXPECT_TRUE(assigned == a);
  assigned = assigned;
  EXPECT_EQ(assigned.GetVertexCount(), 3u);
  EXPECT_EQ(assigned.RemoveAll(), 1);
  EXPECT_EQ(assigned.GetVertexCount(), 0u);
  EXPECT_EQ(assigned.GetTolerance(), 0.75);
}
