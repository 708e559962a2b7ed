#include "suite/GeoMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kHalfPi = kPi / 2;
const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

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
  EXPECT_EQ(PerpAng(1, 0, 0, 0, 10, 0, 0, 0, 0, &a), 1);
  EXPECT_EQ(a, -kHalfPi);  // the end point takes the last segment
}

// At an interior point the angle bisects the corner on the right, so that an offset
// line's corner lies along it at d / sin(corner / 2), on the inner side of a right turn
// and the outer side of a left one. A reversal gives the tip, ahead of the vertex.
TEST(PerpAng, MitreAlongBisectorKeepsOffsetFromBothSegments) {
  EXPECT_EQ(Corner(0, 0, 10, 0, 20, 0), -kHalfPi);
  EXPECT_EQ(Corner(0, 0, 10, 0, 0, 0), 0.0);
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

TEST(PerpAng, ZeroLengthSegmentsGiveFiniteAnglesAndMissingPartsAreRefused) {
  EXPECT_EQ(Normal(5, 5, 5, 5), -kHalfPi);
  EXPECT_EQ(Corner(5, 5, 5, 5, 5, 10), 0.0);      // the outgoing segment decides
  EXPECT_EQ(Corner(0, 5, 5, 5, 5, 5), -kHalfPi);  // the incoming one decides
  EXPECT_EQ(Corner(5, 5, 5, 5, 5, 5), -kHalfPi);
  EXPECT_EQ(Corner(kNan, 0, 0, 0, 0, 10), 0.0);
  double a = 7;
  EXPECT_EQ(PerpAng(0, 0, 0, 0, 1, 1, 2, 2, 0, &a), 0);
  EXPECT_EQ(a, 7);
  EXPECT_EQ(PerpAng(0, 1, 0, 0, 1, 1, 2, 2, 0, nullptr), 0);
}

// The corner angle is the same for a turn to either side; a zero-length segment counts as
// straight and is reported.
TEST(BisectAngle, CornerAngleAndDirectionsOfTheSegments) {
  const struct {
    double x1, y1, x2, y2, x3, y3;
    int result;
    double corner, in, out;
  } cases[] = {{0, 0, 10, 0, 20, 0, 1, kPi, 0, 0},          {0, 0, 10, 0, 10, 7, 1, kHalfPi, 0, kHalfPi},
               {0, 0, 10, 0, 10, -7, 1, kHalfPi, 0, -kHalfPi}, {0, 0, 10, 0, 0, 10, 1, kPi / 4, 0, 3 * kPi / 4},
               {0, 0, 10, 0, 3, 0, 1, 0, 0, kPi},           {10, 0, 10, 0, 20, 5, 0, kPi, 0, std::atan2(5, 10)}};
  for (const auto& c : cases) {
    double corner = 9, in = 9, out = 9;
    EXPECT_EQ(BisectAngle(c.x1, c.y1, c.x2, c.y2, c.x3, c.y3, &corner, &in, &out), c.result);
    EXPECT_DOUBLE_EQ(corner, c.corner) << c.x3 << ", " << c.y3;
    EXPECT_DOUBLE_EQ(in, c.in);
    EXPECT_DOUBLE_EQ(out, c.out);
  }
  EXPECT_EQ(BisectAngle(0, 0, 1, 1, 2, 2, nullptr, nullptr, nullptr), 1);
}

// With adjust 0 text is turned half round so that it reads left to right; vertical text
// reads upwards, even a little past the vertical. A non-finite angle gives 0.
TEST(AdjustTextAngle, ReadableTextIsTurnedHalfRound) {
  const struct {
    int adjust;
    double angle, expected;
  } cases[] = {
      {0, 0.3, 0.3},           {0, kPi, 0.0},           {0, 3 * kPi / 4, -kPi / 4},
      {0, -3 * kPi / 4, kPi / 4}, {0, 2 * kPi + 0.3, 0.3}, {0, 7 * kPi / 4, -kPi / 4},
      {0, kHalfPi, kHalfPi},   {0, -kHalfPi, kHalfPi},  {0, kHalfPi + 1e-12, kHalfPi + 1e-12},
      {0, -kHalfPi + 1e-12, kHalfPi + 1e-12},           {0, kHalfPi + 1e-6, -kHalfPi + 1e-6},
      {1, kPi, kPi},           {1, -kPi, kPi},          {1, 3 * kHalfPi, -kHalfPi},
      {0, kNan, 0},            {1, kInf, 0},
  };
  for (const auto& c : cases) {
    double cosA = 9, sinA = 9;
    const double a = AdjustTextAngle(c.adjust, c.angle, &cosA, &sinA);
    EXPECT_NEAR(a, c.expected, 1e-15) << c.adjust << ", " << c.angle;
    EXPECT_EQ(cosA, std::cos(a));
    EXPECT_EQ(sinA, std::sin(a));
  }
  EXPECT_EQ(AdjustTextAngle(0, kPi, nullptr, nullptr), 0.0);
}

// Halves go away from zero, judged on the exact value rather than the rounded product;
// values too large to have decimals come back unchanged.
TEST(Round, HalvesGoAwayFromZeroOnTheExactValue) {
  const struct {
    double value;
    unsigned decimals;
    double expected;
  } cases[] = {
      {0.5, 0, 1.0},     {2.5, 0, 3.0},   {-0.5, 0, -1.0},   {-2.5, 0, -3.0}, {0.49999999999999994, 0, 0.0},
      {1.25, 1, 1.3},    {-1.25, 1, -1.3}, {123.456, 2, 123.46},
      {2.675, 2, 2.67},  // 2.67499999999999982236431605997495353221893310546875
      {0.015, 2, 0.01},  // 0.015 × 100 rounds to exactly 1.5; 0.015 is below it
      {-0.015, 2, -0.01}, {1e300, 2, 1e300}, {4503599627370497.0, 0, 4503599627370497.0},
      {0.123, 400, 0.123}, {0.0, 400, 0.0}, {-kInf, 0, -kInf},
  };
  for (const auto& c : cases) EXPECT_EQ(Round(c.value, c.decimals), c.expected) << c.value << ", " << c.decimals;
  EXPECT_TRUE(std::isnan(Round(kNan, 3)));
}

// A triangle flat in plan (within 1e-12 of its longest edge squared) takes the elevation
// along that edge, clamped to its ends, instead of a steep plane.
TEST(InterpolateElevOnTriangle, PlaneThroughThreePointsElseTheLongestEdge) {
  const struct {
    double x, y, x1, y1, z1, x2, y2, z2, x3, y3, z3, z;
  } cases[] = {
      {2, 5, 0, 0, 1, 1, 0, 3, 0, 1, 4, 20},  // z = 1 + 2x + 3y
      {0.5, 0.5, 0, 0, 1, 1, 0, 3, 0, 1, 4, 3.5},
      {10, 0, 10, 0, 5, 20, 0, 5, 10, 10, 5, 5},
      {5, 7, 0, 0, 0, 4, 0, 40, 10, 0, 10, 5},  // edge 3–1
      {5, 7, 0, 0, 0, 10, 0, 10, 4, 0, 40, 5},  // edge 1–2
      {25, 0, 0, 0, 0, 10, 0, 10, 4, 0, 40, 10},
      {-3, 0, 0, 0, 0, 10, 0, 10, 4, 0, 40, 0},
      {9, 9, 2, 2, 6, 2, 2, 7, 2, 2, 8, 6},  // a point
      {5, 0, 0, 0, 0, 10, 0, 10, 5, 1e-14, 99, 5},
  };
  for (const auto& c : cases)
    EXPECT_EQ(InterpolateElevOnTriangle(c.x, c.y, c.x1, c.y1, c.z1, c.x2, c.y2, c.z2, c.x3, c.y3, c.z3), c.z)
        << c.x << ", " << c.y;
}
