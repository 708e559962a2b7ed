#include "linestyle/LineWalk.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <vector>

namespace {

using vantrel1::LineWalk;
using vantrel1::WalkPlacements;

constexpr double kSinPi = 1.2246467991473532e-16;  // sin(π) as a double: not 0

struct Visit {
  long index;
  bool restarted;
  double x, y;
};

std::vector<Visit> Visits(const std::vector<double>& x, const std::vector<double>& y, const RECT* clip) {
  LineWalk walk(x.data(), y.data(), static_cast<long>(x.size()), clip);
  std::vector<Visit> visits;
  while (walk.NextSegment()) {
    visits.push_back({walk.Index(), walk.Restarted(), walk.X(), walk.Y()});
    walk.Advance(1);  // leave the position inside the segment
  }
  return visits;
}

struct Placement {
  double x, y;
  long index;
};

std::vector<Placement> Placements(const std::vector<double>& x, const std::vector<double>& y, const RECT* clip,
                                  double first, double interval) {
  LineWalk walk(x.data(), y.data(), static_cast<long>(x.size()), clip);
  std::vector<Placement> out;
  WalkPlacements(
      walk, first, interval, [](const LineWalk&) { return 0.0; },
      [&](const LineWalk& w) { out.push_back({w.X(), w.Y(), w.Index()}); });
  return out;
}

}  // namespace

// How the reversed direction, the short segment and the restart after rejected segments
// show in what is drawn is pinned by the line item drawing tests.
TEST(LineWalk, DirectionIsHeldReversedAndTheSignOfAZeroDifferenceTurnsIt) {
  // East is π, whose sine is not 0; west is 2π, or 0 when the y difference is −0, as
  // atan2(−0, −1) is −π. The two westward segments must not share a remembered direction.
  const double x[] = {0, 10, 0, 10, 0};
  const double y[] = {0, 0, 0, 0, -0.0};
  LineWalk walk(x, y, 5, nullptr);
  ASSERT_TRUE(walk.NextSegment());
  EXPECT_EQ(walk.Cos(), -1.0);
  EXPECT_EQ(walk.Sin(), kSinPi);
  ASSERT_TRUE(walk.NextSegment());
  EXPECT_EQ(walk.Cos(), 1.0);
  EXPECT_EQ(walk.Sin(), -2 * kSinPi);
  ASSERT_TRUE(walk.NextSegment());
  ASSERT_TRUE(walk.NextSegment());
  EXPECT_EQ(walk.Sin(), 0.0);
  EXPECT_FALSE(walk.NextSegment());
}

TEST(LineWalk, EveryEdgeRejectsOnlyWhenBothEndsLieBeyondIt) {
  const RECT clip{0, 100, 100, 0};
  EXPECT_TRUE(Visits({-1, -2}, {50, 50}, &clip).empty());
  EXPECT_TRUE(Visits({101, 102}, {50, 50}, &clip).empty());
  EXPECT_TRUE(Visits({50, 50}, {-1, -2}, &clip).empty());
  EXPECT_TRUE(Visits({50, 50}, {101, 102}, &clip).empty());
  // Beyond different edges, or touching: visited.
  EXPECT_EQ(Visits({-1, 50}, {50, 101}, &clip).size(), 1u);
  EXPECT_EQ(Visits({0, -5}, {50, 50}, &clip).size(), 1u);
  EXPECT_EQ(Visits({-10, 110}, {-5, 105}, &clip).size(), 1u);  // crosses diagonally past a corner
  // Without a clip rectangle the bounds are the 32-bit plane.
  EXPECT_TRUE(Visits({-2147483649.0, -3e9}, {0, 0}, nullptr).empty());
  EXPECT_EQ(Visits({-2147483648.0, -3e9}, {0, 0}, nullptr).size(), 1u);
}

TEST(LineWalk, SegmentsWithoutFiniteCoordinatesAreSkippedLikeRejectedOnes) {
  const double inf = INFINITY;
  const auto v = Visits({0, NAN, 10, 20, inf, 30, 40}, {0, 0, 0, 0, 0, 0, 0}, nullptr);
  ASSERT_EQ(v.size(), 2u);
  EXPECT_EQ(v[0].index, 3);
  EXPECT_TRUE(v[0].restarted);
  EXPECT_EQ(v[1].index, 6);
  EXPECT_TRUE(v[1].restarted);
  EXPECT_TRUE(Visits({-1.7e308, 1.7e308}, {0, 0}, nullptr).empty());  // its length overflows
  // Null arrays and fewer than two points have no segments.
  LineWalk none(nullptr, nullptr, 5, nullptr);
  EXPECT_FALSE(none.NextSegment());
  const double one = 0;
  LineWalk single(&one, &one, 1, nullptr);
  EXPECT_FALSE(single.NextSegment());
}

TEST(LineWalk, BoxGuardIsInclusiveAndToleratesRoundingOffAnAxis) {
  const double x[] = {0, 100};
  const double y[] = {0, 0};
  LineWalk walk(x, y, 2, nullptr);
  ASSERT_TRUE(walk.NextSegment());
  walk.Advance(30);  // y is now −30 sin(π), a few ulps below the segment's zero height
  EXPECT_LT(walk.Y(), 0.0);
  EXPECT_TRUE(walk.WithinBox(0));
  walk.MoveTo(100.5, 0);
  EXPECT_FALSE(walk.WithinBox(0));
  EXPECT_TRUE(walk.WithinBox(0.5));
  walk.MoveTo(50, -1e-8);  // the allowance is 1e-9 × max(1, |y|): 1e-9 here
  EXPECT_FALSE(walk.WithinBox(0));
  walk.MoveTo(50, -0.9e-9);
  EXPECT_TRUE(walk.WithinBox(0));
  walk.MoveTo(100.00001, 0);  // 1e-5 past the end: more than 1e-9 × 100
  EXPECT_FALSE(walk.WithinBox(0));
}

TEST(WalkPlacements, AfterRejectedSegmentsTheRemainingDistanceResumesAtTheNextVisibleStart) {
  const RECT clip{0, 2000, 1000, 0};
  // 40 and 60 walked, then two segments below the clip that are not walked: the walk
  // resumes at (60, −20) with 900 left, not 870.
  const auto p = Placements({0, 40, 40, 60, 60, 60}, {50, 50, -10, -10, -20, 1000}, &clip, 0, 1000);
  ASSERT_EQ(p.size(), 2u);
  EXPECT_EQ(p[0].x, 0.0);
  EXPECT_EQ(p[0].y, 50.0);
  EXPECT_EQ(p[1].index, 5);
  EXPECT_NEAR(p[1].x, 60.0, 1e-12);
  EXPECT_EQ(p[1].y, 880.0);
}

TEST(WalkPlacements, NothingForAnIntervalThatIsNotPositiveAndNegativeFirstMeansTheStart) {
  for (const double interval : {0.0, -5.0, double(NAN)})
    EXPECT_TRUE(Placements({0, 250}, {0, 0}, nullptr, 0, interval).empty());
  const auto p = Placements({0, 250}, {0, 0}, nullptr, -30, 100);
  ASSERT_EQ(p.size(), 3u);
  EXPECT_EQ(p[0].x, 0.0);
}

TEST(WalkPlacements, LongSegmentThroughASmallViewSkipsWholeIntervalsOutsideIt) {
  // A billion units with a placement every unit, seen through a view 10 wide: only the
  // stretches near the view are walked step by step, and the placements there keep their
  // phase (every whole unit from the start at −1e9).
  const RECT clip{0, 10, 10, -10};
  const auto start = std::chrono::steady_clock::now();
  const auto p = Placements({-1e9, 1e9}, {0, 0}, &clip, 0, 1);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  EXPECT_LT(p.size(), 10000u);
  EXPECT_LT(seconds, 2.0);
  int inView = 0;
  for (const Placement& placement : p) {
    if (placement.x < 0 || placement.x > 10) continue;
    ++inView;
    EXPECT_EQ(placement.x, std::round(placement.x));
  }
  EXPECT_EQ(inView, 11);
}

TEST(WalkPlacements, SegmentFarBeyondWhereAStepStillMovesEnds) {
  // At 1e300 a step of 1 no longer changes a coordinate; the jumps still end the walk.
  const RECT clip{0, 10, 10, -10};
  const auto p = Placements({-1e300, 1e300}, {5, 5}, &clip, 0, 1);
  EXPECT_LT(p.size(), 100000u);
}
