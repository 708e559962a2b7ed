#include "geometry/NearestPoint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

const CdoubleArray kXs{0, 10, 10, 0, 5};
const CdoubleArray kYs{0, 0, 10, 10, 5};

}  // namespace

TEST(NearestPoint, RefusesEmptyOrMismatchedArrays) {
  double d = -1;
  EXPECT_EQ(NearestPoint(1, 1, CdoubleArray(), CdoubleArray(), &d, 0, 0, nullptr), -1);
  EXPECT_EQ(NearestPoint(1, 1, kXs, CdoubleArray{0, 0, 10, 10}, &d, 0, 0, nullptr), -1);
  EXPECT_EQ(d, -1);
}

TEST(NearestPoint, FindsTheClosestVertexAndItsDistance) {
  double d = 0;
  EXPECT_EQ(NearestPoint(9, 3, kXs, kYs, &d, 0, 0, nullptr), 1);
  EXPECT_EQ(d, std::sqrt(10.0));
  EXPECT_EQ(NearestPoint(-1000, 2000, kXs, kYs, nullptr, 0, 0, nullptr), 3);
  EXPECT_EQ(NearestPoint(5, 5, kXs, kYs, &d, -1, -1, nullptr), 4);
  EXPECT_EQ(d, 0);
}

TEST(NearestPoint, TieKeepsTheLowerIndex) {
  EXPECT_EQ(NearestPoint(5, 0, kXs, kYs, nullptr, 0, 0, nullptr), 0);  // 0 and 1 at 5, 4 at 5 too
  EXPECT_EQ(NearestPoint(10, 5, kXs, kYs, nullptr, 0, 0, nullptr), 1);
}

TEST(NearestPoint, MaskedVerticesAreIgnored) {
  std::vector<bool> skip{false, true, false, false, true};
  double d = 0;
  EXPECT_EQ(NearestPoint(9, 3, kXs, kYs, &d, 0, 0, &skip), 2);
  EXPECT_EQ(d, std::sqrt(50.0));
  std::vector<bool> all(5, true);
  d = 7;
  EXPECT_EQ(NearestPoint(9, 3, kXs, kYs, &d, 0, 0, &all), -1);
  EXPECT_EQ(d, 7);
  std::vector<bool> shortMask(4, false);
  EXPECT_EQ(NearestPoint(9, 3, kXs, kYs, nullptr, 0, 0, &shortMask), -1);
  std::vector<bool> longMask(9, false);
  EXPECT_EQ(NearestPoint(9, 3, kXs, kYs, nullptr, 0, 0, &longMask), 1);
}

TEST(NearestPoint, SearchBoxJudgesOnlyTheNearestVertex) {
  const CdoubleArray xs{6, 4.5};
  const CdoubleArray ys{0, 7};
  double d = 3;
  // Vertex 0 is nearest, 6 off in x; vertex 1 lies inside the box but is not considered.
  EXPECT_EQ(NearestPoint(0, 0, xs, ys, &d, 5, 0, nullptr), -1);
  EXPECT_EQ(d, 3);
  EXPECT_EQ(NearestPoint(0, 0, xs, ys, &d, 6, 0, nullptr), 0);  // the box edge is inside
  EXPECT_EQ(NearestPoint(0, 0, xs, ys, nullptr, 0, 8, nullptr), 0);
  EXPECT_EQ(NearestPoint(0, 10, xs, ys, nullptr, 0, 2.9, nullptr), -1);
  EXPECT_EQ(NearestPoint(0, 10, xs, ys, nullptr, 4.5, 3, nullptr), 1);
}

TEST(NearestPoint, VerticesBeyondSinglePrecisionRangeAreNeverFound) {
  const CdoubleArray xs{2e19, std::numeric_limits<double>::quiet_NaN()};
  const CdoubleArray ys{0, 0};
  EXPECT_EQ(NearestPoint(0, 0, xs, ys, nullptr, 0, 0, nullptr), -1);
  EXPECT_EQ(NearestPoint(0, 0, CdoubleArray{1.8e19}, CdoubleArray{0}, nullptr, 0, 0, nullptr), 0);
}
