#include "geometry/NearestPoint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace {

// The index found and the distance reported; -1 when the distance was left alone.
std::pair<long, double> Nearest(double x, double y, const CdoubleArray& xs, const CdoubleArray& ys, double tolX = 0,
                                double tolY = 0, std::vector<bool>* skip = nullptr) {
  double d = -1;
  const long index = NearestPoint(x, y, xs, ys, &d, tolX, tolY, skip);
  return {index, d};
}

using Found = std::pair<long, double>;

const CdoubleArray kXs{0, 10, 10, 0, 5};
const CdoubleArray kYs{0, 0, 10, 10, 5};

}  // namespace

TEST(NearestPoint, FindsTheClosestVertexAndTiesKeepTheLowerIndex) {
  EXPECT_EQ(Nearest(9, 3, kXs, kYs), Found(1, std::sqrt(10.0)));
  EXPECT_EQ(Nearest(-1000, 2000, kXs, kYs).first, 3);
  EXPECT_EQ(Nearest(5, 5, kXs, kYs, -1, -1), Found(4, 0));
  EXPECT_EQ(Nearest(5, 0, kXs, kYs).first, 0);  // 0, 1 and 4 all at 5
  EXPECT_EQ(Nearest(10, 5, kXs, kYs).first, 1);
  EXPECT_EQ(NearestPoint(9, 3, kXs, kYs, nullptr, 0, 0, nullptr), 1);
  EXPECT_EQ(Nearest(1, 1, CdoubleArray(), CdoubleArray()), Found(-1, -1));
  EXPECT_EQ(Nearest(1, 1, kXs, CdoubleArray{0, 0, 10, 10}), Found(-1, -1));
}

TEST(NearestPoint, MaskedVerticesAreIgnoredAndAShortMaskIsRefused) {
  std::vector<bool> skip{false, true, false, false, true};
  EXPECT_EQ(Nearest(9, 3, kXs, kYs, 0, 0, &skip), Found(2, std::sqrt(50.0)));
  std::vector<bool> all(5, true);
  EXPECT_EQ(Nearest(9, 3, kXs, kYs, 0, 0, &all), Found(-1, -1));
  std::vector<bool> shortMask(4, false);
  EXPECT_EQ(Nearest(9, 3, kXs, kYs, 0, 0, &shortMask).first, -1);
  std::vector<bool> longMask(9, false);
  EXPECT_EQ(Nearest(9, 3, kXs, kYs, 0, 0, &longMask).first, 1);
}

// Vertex 0 is nearest to the origin, 6 off in x; vertex 1 lies inside a box of 5 but is
// not considered.
TEST(NearestPoint, SearchBoxJudgesOnlyTheNearestVertex) {
  const CdoubleArray xs{6, 4.5};
  const CdoubleArray ys{0, 7};
  const struct {
    double y, tolX, tolY;
    long index;
  } cases[] = {{0, 5, 0, -1}, {0, 6, 0, 0} /* the box edge is inside */, {0, 0, 8, 0},
               {10, 0, 2.9, -1}, {10, 4.5, 3, 1}};
  for (const auto& c : cases)
    EXPECT_EQ(Nearest(0, c.y, xs, ys, c.tolX, c.tolY).first, c.index) << c.y << " " << c.tolX << " " << c.tolY;
  EXPECT_EQ(Nearest(0, 0, xs, ys, 5, 0).second, -1);
}

TEST(NearestPoint, VerticesBeyondSinglePrecisionRangeAreNeverFound) {
  EXPECT_EQ(Nearest(0, 0, CdoubleArray{2e19, std::numeric_limits<double>::quiet_NaN()}, CdoubleArray{0, 0}).first, -1);
  EXPECT_EQ(Nearest(0, 0, CdoubleArray{1.8e19}, CdoubleArray{0}).first, 0);
}
