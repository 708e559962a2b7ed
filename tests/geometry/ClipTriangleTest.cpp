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

}  // namespace

// The tile's left and bottom edges are inside, its right and top edges outside, so that a
// vertex on a shared edge belongs to one tile only.
TEST(ClipTriangle, AppendsTheOutlineInsideTheTileWithElevationsOnThePlane) {
  const CRectDouble tile(0, 10, 10, 0);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    const char* what;
    CPointDouble a, b, c;
    std::vector<Xyz> appended;
  } cases[] = {
      {"inside: rotated to b, c, a", P(1, 1), P(5, 1), P(1, 5), {{5, 1, 7}, {1, 5, 11}, {1, 1, 3}}},
      {"outside", P(11, 1), P(15, 1), P(11, 5), {}},
      {"outside, touching the right edge", P(10, 1), P(15, 1), P(10, 5), {}},
      // a is cut away and returns as the crossing of both its edges, first in the list.
      {"vertex on the right edge", P(10, 5), P(5, 2), P(5, 8), {{10, 5, 20}, {5, 2, 9}, {5, 8, 21}}},
      {"vertex on the left edge", P(0, 5), P(5, 2), P(5, 8), {{5, 2, 9}, {5, 8, 21}, {0, 5, 10}}},
      {"through a corner, given once", P(5, 5), P(15, -5), P(5, -5), {{5, 5, 15}, {10, 0, 10}, {5, 0, 5}}},
      {"round two corners", P(-10, 5), P(20, -10), P(20, 20), {{0, 10, 20}, {0, 0, 0}, {10, 0, 10}, {10, 10, 30}}},
      {"two edges cut", P(5, 5), P(15, 5), P(5, 15), {{5, 10, 25}, {5, 5, 15}, {10, 5, 20}, {10, 10, 30}}},
      {"flat: elevations along the longest edge", {-5, 5, 1}, {15, 5, 3}, {5, 5, 2},
       {{0, 5, 1.5}, {10, 5, 2.5}, {5, 5, 2}}},
      {"NaN vertex", P(1, 1), {nan, 1, 0}, P(1, 5), {}},
      {"infinite vertex", P(1, 1), {inf, 1, 0}, P(1, 5), {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    CPolygonDouble out;
    out.AppendPoint(-1, -1, -1);  // not emptied first
    EXPECT_EQ(tile.ClipTriangle(c.a, c.b, c.c, &out), c.appended.size());
    std::vector<Xyz> expected{{-1, -1, -1}};
    expected.insert(expected.end(), c.appended.begin(), c.appended.end());
    EXPECT_EQ(Vertices(out), expected);
  }
  EXPECT_EQ(tile.ClipTriangle(P(1, 1), P(5, 1), P(1, 5), nullptr), 0u);
}
