#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "geometry/PolygonDouble.h"
#include "geometry/RectDouble.h"

namespace {

struct Xyz {
  double x, y, z;
  bool operator==(const Xyz&) const = default;
};

void PrintTo(const Xyz& p, std::ostream* os) { *os << "(" << p.x << ", " << p.y << ", " << p.z << ")"; }

std::vector<Xyz> Vertices(const CPolygonDouble& poly) {
  std::vector<Xyz> out;
  CPointDouble p;
  for (unsigned i = 0; poly.GetVertex(i, &p); ++i) out.push_back({p.x, p.y, p.z});
  return out;
}

// Vertices carry z = x + 2y, so the plane through any three of them is that plane.
CPointDouble P(double x, double y) { return CPointDouble(x, y, x + 2 * y); }

const CRectDouble kTile(0, 10, 10, 0);

}  // namespace

TEST(ClipTriangle, TriangleInsideComesOutRotatedToBCA) {
  CPolygonDouble out;
  EXPECT_EQ(kTile.ClipTriangle(P(1, 1), P(5, 1), P(1, 5), &out), 3u);
  EXPECT_EQ(Vertices(out), (std::vector<Xyz>{{5, 1, 7}, {1, 5, 11}, {1, 1, 3}}));
}

TEST(ClipTriangle, TriangleOutsideAppendsNothing) {
  CPolygonDouble out;
  out.AppendPoint(42, 42, 42);
  EXPECT_EQ(kTile.ClipTriangle(P(11, 1), P(15, 1), P(11, 5), &out), 0u);
  EXPECT_EQ(kTile.ClipTriangle(P(10, 1), P(15, 1), P(10, 5), &out), 0u);  // touches the right edge
  EXPECT_EQ(Vertices(out), (std::vector<Xyz>{{42, 42, 42}}));
}

TEST(ClipTriangle, RightEdgeIsOutsideLeftEdgeInside) {
  CPolygonDouble onRight;
  EXPECT_EQ(kTile.ClipTriangle(P(10, 5), P(5, 2), P(5, 8), &onRight), 3u);
  // a is cut away and returns as the crossing of both its edges, first in the list.
  EXPECT_EQ(Vertices(onRight), (std::vector<Xyz>{{10, 5, 20}, {5, 2, 9}, {5, 8, 21}}));
  CPolygonDouble onLeft;
  EXPECT_EQ(kTile.ClipTriangle(P(0, 5), P(5, 2), P(5, 8), &onLeft), 3u);
  EXPECT_EQ(Vertices(onLeft), (std::vector<Xyz>{{5, 2, 9}, {5, 8, 21}, {0, 5, 10}}));
}

TEST(ClipTriangle, CrossingThroughACornerGivesTheCornerOnce) {
  CPolygonDouble out;
  out.AppendPoint(-1, -1, -1);
  EXPECT_EQ(kTile.ClipTriangle(P(5, 5), P(15, -5), P(5, -5), &out), 3u);
  EXPECT_EQ(Vertices(out), (std::vector<Xyz>{{-1, -1, -1}, {5, 5, 15}, {10, 0, 10}, {5, 0, 5}}));

  CPolygonDouble big;
  EXPECT_EQ(kTile.ClipTriangle(P(-10, 5), P(20, -10), P(20, 20), &big), 4u);
  EXPECT_EQ(Vertices(big), (std::vector<Xyz>{{0, 10, 20}, {0, 0, 0}, {10, 0, 10}, {10, 10, 30}}));
}

TEST(ClipTriangle, CutsEdgesWithInterpolatedElevations) {
  CPolygonDouble out;
  EXPECT_EQ(kTile.ClipTriangle(P(5, 5), P(15, 5), P(5, 15), &out), 4u);
  EXPECT_EQ(Vertices(out), (std::vector<Xyz>{{5, 10, 25}, {5, 5, 15}, {10, 5, 20}, {10, 10, 30}}));
}

TEST(ClipTriangle, FlatTriangleTakesElevationsAlongItsLongestEdge) {
  CPolygonDouble out;
  EXPECT_EQ(kTile.ClipTriangle({-5, 5, 1}, {15, 5, 3}, {5, 5, 2}, &out), 3u);
  EXPECT_EQ(Vertices(out), (std::vector<Xyz>{{0, 5, 1.5}, {10, 5, 2.5}, {5, 5, 2}}));
}

TEST(ClipTriangle, NonFiniteVertexOrMissingOutputGivesNothing) {
  CPolygonDouble out;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(kTile.ClipTriangle(P(1, 1), {nan, 1, 0}, P(1, 5), &out), 0u);
  EXPECT_EQ(kTile.ClipTriangle(P(1, 1), {std::numeric_limits<double>::infinity(), 1, 0}, P(1, 5), &out), 0u);
  EXPECT_EQ(out.GetVertexCount(), 0u);
  EXPECT_EQ(kTile.ClipTriangle(P(1, 1), P(5, 1), P(1, 5), nullptr), 0u);
}
