#include "suite/GeoMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kHalfPi = kPi / 2;

double Normal(double x0, double y0, double x1, double y1) {
  double a = 99;
  EXPECT_EQ(PerpAng(0, 1, 0, 0, x0, y0, x1, y1, 0, &a), 1);
  return a;
}

double Corner(double x1, double y1, double x2, double y2, double x3, double y3) {
  double a = 99;
  EXPECT_EQ(PerpAng(1, 1, x1, y1, x2, y2, x3, y3, 0, &a), 1);
  return a;
}

// Signed distance of (px, py) from the line through a → b, positive on the right.
double RightDistance(double ax, double ay, double bx, double by, double px, double py) {
  const double dx = bx - ax, dy = by - ay;
  return ((px - ax) * dy - (py - ay) * dx) / std::hypot(dx, dy);
}

}  // namespace

TEST(PerpAng, NormalPointsRightOfTravelWithinMinusPiToPi) {
  EXPECT_EQ(Normal(0, 0, 10, 0), -kHalfPi);  // east → south
  EXPECT_EQ(Normal(0, 0, -10, 0), kHalfPi);  // west → north
  EXPECT_EQ(Normal(0, 0, 0, 10), 0.0);       // north → east
  EXPECT_EQ(Normal(0, 0, 0, -10), kPi);      // south → west, never −π
  double a = 0;
  PerpAng(1, 0, 0, 0, 10, 0, 0, 0, 0, &a);
  EXPECT_EQ(a, -kHalfPi);  // the end point takes the last segment
}

TEST(PerpAng, NormalPlusHalfPiIsDirectionOfTravel) {
  const double dirs[][2] = {{3, 4}, {-3, 4}, {-3, -4}, {3, -4}, {1e-7, 5}, {-8, 1e-9}};
  for (const auto& d : dirs) {
    const double a = Normal(100, 200, 100 + d[0], 200 + d[1]) + kHalfPi;
    const double len = std::hypot(d[0], d[1]);
    EXPECT_NEAR(std::cos(a), d[0] / len, 1e-14);
    EXPECT_NEAR(std::sin(a), d[1] / len, 1e-14);
  }
}

TEST(PerpAng, InteriorPointTakesBisectorOnTheRight) {
  EXPECT_EQ(Corner(0, 0, 10, 0, 20, 0), -kHalfPi);
  EXPECT_DOUBLE_EQ(Corner(0, 0, 10, 0, 10, -10), -3 * kPi / 4);  // right turn: inner side
  EXPECT_DOUBLE_EQ(Corner(0, 0, 10, 0, 10, 10), -kPi / 4);       // left turn: outer side
  EXPECT_EQ(Corner(0, 0, 10, 0, 0, 0), 0.0);  // reversal: the tip, ahead of the vertex
}

TEST(PerpAng, MitreAlongBisectorKeepsOffsetFromBothSegments) {
  const double corners[][6] = {
      {0, 0, 10, 0, 13, -7}, {0, 0, 10, 0, 2, 3}, {5, 5, 1, 9, -20, 8}, {0, 0, 4, 3, 8, 0}};
  for (const auto& c : corners) {
    for (double d : {15.0, -15.0}) {
      double b = 0;
      ASSERT_EQ(BisectAngle(c[0], c[1], c[2], c[3], c[4], c[5], &b, nullptr, nullptr), 1);
      const double m = d / std::sin(b * 0.5);
      const double a = Corner(c[0], c[1], c[2], c[3], c[4], c[5]);
      const double px = c[2] + m * std::cos(a), py = c[3] + m * std::sin(a);
      EXPECT_NEAR(RightDistance(c[0], c[1], c[2], c[3], px, py), d, 1e-12);
      EXPECT_NEAR(RightDistance(c[2], c[3], c[4], c[5], px, py), d, 1e-12);
    }
  }
}

TEST(PerpAng, ZeroLengthSegmentsGiveFiniteAngles) {
  EXPECT_EQ(Normal(5, 5, 5, 5), -kHalfPi);
  EXPECT_EQ(Corner(5, 5, 5, 5, 5, 10), 0.0);    // the outgoing segment decides
  EXPECT_EQ(Corner(0, 5, 5, 5, 5, 5), -kHalfPi);  // the incoming one decides
  EXPECT_EQ(Corner(5, 5, 5, 5, 5, 5), -kHalfPi);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Corner(nan, 0, 0, 0, 0, 10), 0.0);
}

TEST(PerpAng, RefusesMissingOutputOrNeighbours) {
  double a = 7;
  EXPECT_EQ(PerpAng(0, 0, 0, 0, 1, 1, 2, 2, 0, &a), 0);
  EXPECT_EQ(a, 7);
  EXPECT_EQ(PerpAng(0, 1, 0, 0, 1, 1, 2, 2, 0, nullptr), 0);
}

TEST(BisectAngle, CornerAngleBetweenSegments) {
  double b = 0, in = 0, out = 0;
  EXPECT_EQ(BisectAngle(0, 0, 10, 0, 20, 0, &b, &in, &out), 1);
  EXPECT_EQ(b, kPi);
  EXPECT_EQ(in, 0.0);
  EXPECT_EQ(out, 0.0);
  EXPECT_EQ(BisectAngle(0, 0, 10, 0, 10, 7, &b, &in, &out), 1);
  EXPECT_EQ(b, kHalfPi);
  EXPECT_EQ(out, kHalfPi);
  BisectAngle(0, 0, 10, 0, 10, -7, &b, nullptr, nullptr);
  EXPECT_EQ(b, kHalfPi);  // the same for a turn to either side
  BisectAngle(0, 0, 10, 0, 0, 10, &b, nullptr, nullptr);
  EXPECT_DOUBLE_EQ(b, kPi / 4);
  BisectAngle(0, 0, 10, 0, 3, 0, &b, nullptr, &out);
  EXPECT_EQ(b, 0.0);
  EXPECT_EQ(out, kPi);
}

TEST(BisectAngle, ZeroLengthSegmentCountsAsStraight) {
  double b = 0, in = 9;
  EXPECT_EQ(BisectAngle(10, 0, 10, 0, 20, 5, &b, &in, nullptr), 0);
  EXPECT_EQ(b, kPi);
  EXPECT_EQ(in, 0.0);
  EXPECT_EQ(BisectAngle(0, 0, 1, 1, 2, 2, nullptr, nullptr, nullptr), 1);
}

TEST(AdjustTextAngle, ReadableTextIsTurnedHalfRound) {
  double c = 0, s = 0;
  EXPECT_EQ(AdjustTextAngle(0, 0.3, &c, &s), 0.3);
  EXPECT_EQ(c, std::cos(0.3));
  EXPECT_EQ(s, std::sin(0.3));
  EXPECT_EQ(AdjustTextAngle(0, kPi, &c, &s), 0.0);
  EXPECT_EQ(c, 1.0);
  EXPECT_EQ(s, 0.0);
  EXPECT_DOUBLE_EQ(AdjustTextAngle(0, 3 * kPi / 4, nullptr, nullptr), -kPi / 4);
  EXPECT_DOUBLE_EQ(AdjustTextAngle(0, -3 * kPi / 4, nullptr, nullptr), kPi / 4);
  EXPECT_DOUBLE_EQ(AdjustTextAngle(0, 2 * kPi + 0.3, nullptr, nullptr), 0.3);
  EXPECT_DOUBLE_EQ(AdjustTextAngle(0, 7 * kPi / 4, nullptr, nullptr), -kPi / 4);
}

TEST(AdjustTextAngle, VerticalTextReadsUpwards) {
  EXPECT_EQ(AdjustTextAngle(0, kHalfPi, nullptr, nullptr), kHalfPi);
  EXPECT_EQ(AdjustTextAngle(0, -kHalfPi, nullptr, nullptr), kHalfPi);
  EXPECT_NEAR(AdjustTextAngle(0, kHalfPi + 1e-12, nullptr, nullptr), kHalfPi + 1e-12, 1e-15);
  EXPECT_NEAR(AdjustTextAngle(0, -kHalfPi + 1e-12, nullptr, nullptr), kHalfPi + 1e-12, 1e-15);
  EXPECT_NEAR(AdjustTextAngle(0, kHalfPi + 1e-6, nullptr, nullptr), -kHalfPi + 1e-6, 1e-15);
}

TEST(AdjustTextAngle, NonZeroAdjustKeepsTheDirection) {
  double c = 0, s = 0;
  EXPECT_EQ(AdjustTextAngle(1, kPi, &c, &s), kPi);
  EXPECT_EQ(c, -1.0);
  EXPECT_EQ(AdjustTextAngle(1, -kPi, nullptr, nullptr), kPi);
  EXPECT_DOUBLE_EQ(AdjustTextAngle(1, 3 * kHalfPi, nullptr, nullptr), -kHalfPi);
}

TEST(AdjustTextAngle, NonFiniteAngleGivesZero) {
  double c = 0, s = 1;
  EXPECT_EQ(AdjustTextAngle(0, std::numeric_limits<double>::quiet_NaN(), &c, &s), 0.0);
  EXPECT_EQ(c, 1.0);
  EXPECT_EQ(s, 0.0);
  EXPECT_EQ(AdjustTextAngle(1, std::numeric_limits<double>::infinity(), nullptr, nullptr), 0.0);
}

TEST(Round, HalvesGoAwayFromZero) {
  EXPECT_EQ(Round(0.5, 0), 1.0);
  EXPECT_EQ(Round(2.5, 0), 3.0);
  EXPECT_EQ(Round(-0.5, 0), -1.0);
  EXPECT_EQ(Round(-2.5, 0), -3.0);
  EXPECT_EQ(Round(0.49999999999999994, 0), 0.0);
  EXPECT_EQ(Round(1.25, 1), 1.3);
  EXPECT_EQ(Round(-1.25, 1), -1.3);
  EXPECT_EQ(Round(123.456, 2), 123.46);
}

TEST(Round, ExactValueDecidesNotTheRoundedProduct) {
  EXPECT_EQ(Round(2.675, 2), 2.67);  // 2.67499999999999982236431605997495353221893310546875
  EXPECT_EQ(Round(0.015, 2), 0.01);  // 0.015 × 100 rounds to exactly 1.5, 0.015 is below it
  EXPECT_EQ(Round(-0.015, 2), -0.01);
}

TEST(Round, HugeAndNonFiniteValuesComeBackUnchanged) {
  EXPECT_EQ(Round(1e300, 2), 1e300);
  EXPECT_EQ(Round(4503599627370497.0, 0), 4503599627370497.0);
  EXPECT_EQ(Round(0.123, 400), 0.123);
  EXPECT_EQ(Round(0.0, 400), 0.0);
  EXPECT_TRUE(std::isnan(Round(std::numeric_limits<double>::quiet_NaN(), 3)));
  EXPECT_EQ(Round(-std::numeric_limits<double>::infinity(), 0), -std::numeric_limits<double>::infinity());
}

TEST(InterpolateElevOnTriangle, PlaneThroughThreePoints) {
  // z = 1 + 2x + 3y
  EXPECT_EQ(InterpolateElevOnTriangle(2, 5, 0, 0, 1, 1, 0, 3, 0, 1, 4), 20.0);
  EXPECT_EQ(InterpolateElevOnTriangle(0.5, 0.5, 0, 0, 1, 1, 0, 3, 0, 1, 4), 3.5);
  EXPECT_EQ(InterpolateElevOnTriangle(10, 0, 10, 0, 5, 20, 0, 5, 10, 10, 5), 5.0);
}

TEST(InterpolateElevOnTriangle, FlatTriangleFollowsItsLongestEdge) {
  EXPECT_EQ(InterpolateElevOnTriangle(5, 7, 0, 0, 0, 4, 0, 40, 10, 0, 10), 5.0);  // edge 3–1
  EXPECT_EQ(InterpolateElevOnTriangle(5, 7, 0, 0, 0, 10, 0, 10, 4, 0, 40), 5.0);  // edge 1–2
  EXPECT_EQ(InterpolateElevOnTriangle(25, 0, 0, 0, 0, 10, 0, 10, 4, 0, 40), 10.0);  // clamped
  EXPECT_EQ(InterpolateElevOnTriangle(-3, 0, 0, 0, 0, 10, 0, 10, 4, 0, 40), 0.0);
  EXPECT_EQ(InterpolateElevOnTriangle(9, 9, 2, 2, 6, 2, 2, 7, 2, 2, 8), 6.0);  // a point
  // Flat within 1e-12 of its longest edge squared: the edge, not a steep plane.
  EXPECT_EQ(InterpolateElevOnTriangle(5, 0, 0, 0, 0, 10, 0, 10, 5, 1e-14, 99), 5.0);
}
