#include "geometry/PolygonDouble.h"

#include <gtest/gtest.h>

TEST(CPolygonDouble, VerticesAreAppendedAndReadBackByIndex) {
  CPolygonDouble poly;
  CPointDouble p(9, 9, 9);
  EXPECT_EQ(poly.GetVertex(0, &p), 0);
  EXPECT_EQ(poly.GetVertexIndex(p), -1);
  EXPECT_EQ(poly.IsValid(), 0);
  EXPECT_EQ(poly.AppendPoint(1, 2, 3), 1u);
  EXPECT_EQ(poly.AppendPoint(4, 5, 6), 2u);
  EXPECT_EQ(poly.IsValid(), 0);
  EXPECT_EQ(poly.AppendPoint(7, 8, 9), 3u);
  EXPECT_EQ(poly.IsValid(), 1);
  EXPECT_EQ(poly.GetVertexCount(), 3u);
  EXPECT_EQ(poly.GetVertex(3, &p), 0);
  EXPECT_EQ(poly.GetVertex(1, nullptr), 0);
  ASSERT_EQ(poly.GetVertex(1, &p), 1);
  EXPECT_EQ(p.x, 4);
  EXPECT_EQ(p.y, 5);
  EXPECT_EQ(p.z, 6);
  EXPECT_EQ(p.m_nTag1, -1);

  CPolygonDouble collinear;
  for (double x : {0.0, 1.0, 2.0}) collinear.AppendPoint(x, x, 0);
  EXPECT_EQ(collinear.IsValid(), 1);
}

TEST(CPolygonDouble, GetVertexCopiesEveryField) {
  CPolygonDouble poly;
  CPointDouble tagged(1, 2, 3);
  tagged.m_nTag2 = 12;
  tagged.m_nFlag = 5;
  tagged.SetTolerance(0.125);
  poly.AppendPoint(tagged);
  CPointDouble out;
  ASSERT_EQ(poly.GetVertex(0, &out), 1);
  EXPECT_EQ(out.m_nTag2, 12);
  EXPECT_EQ(out.m_nFlag, 5);
  EXPECT_EQ(out.GetTolerance(), 0.125);
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

TEST(CPolygonDouble, EqualityComparesInOrderWithTheOtherPolygonsVertices) {
  CPolygonDouble a;
  CPolygonDouble b;
  EXPECT_TRUE(a == b);
  a.AppendPoint(0, 0, 0);
  a.AppendPoint(1, 0, 0);
  a.AppendPoint(0, 1, 0);
  EXPECT_FALSE(a == b);
  b.AppendPoint(1, 0, 0);
  b.AppendPoint(0, 1, 0);
  b.AppendPoint(0, 0, 0);
  EXPECT_FALSE(a == b);  // the same ring started elsewhere

  CPolygonDouble loose;
  for (double x : {0.25, 1.0, 0.0}) {
    CPointDouble v(x, x == 0.0 ? 1.0 : 0.0, 0);
    v.SetTolerance(0.5);
    loose.AppendPoint(v);
  }
  EXPECT_TRUE(a == loose);   // loose's vertices compare, within 0.5
  EXPECT_FALSE(loose == a);  // a's vertices compare, within 1e-10
}

TEST(CPolygonDouble, CopiesCarryToleranceAndVertices) {
  CPolygonDouble a;
  a.SetTolerance(0.75);
  a.AppendPoint(1, 2, 3);
  CPolygonDouble copy(a);
  CPolygonDouble assigned;
  assigned.AppendPoint(9, 9, 9);
  assigned.AppendPoint(8, 8, 8);
  assigned = a;
  EXPECT_EQ(copy.GetTolerance(), 0.75);
  EXPECT_EQ(assigned.GetTolerance(), 0.75);
  EXPECT_TRUE(copy == a);
  EXPECT_TRUE(assigned == a);
  assigned = assigned;
  EXPECT_EQ(assigned.GetVertexCount(), 1u);
  EXPECT_EQ(assigned.RemoveAll(), 1);
  EXPECT_EQ(assigned.GetVertexCount(), 0u);
  EXPECT_EQ(assigned.GetTolerance(), 0.75);
}
