#include <gtest/gtest.h>

#include <chrono>
#include <initializer_list>

#include "DrawTestSupport.h"
#include "linestyle/LineItem.h"

using namespace drawtest;

namespace {

CLineItem Item(int width, int offset, std::initializer_list<int> dashes, std::initializer_list<int> gaps) {
  int d[CLineItem::kMaxPairs] = {};
  int g[CLineItem::kMaxPairs] = {};
  int count = 0;
  for (int v : dashes) d[count++] = v;
  count = 0;
  for (int v : gaps) g[count++] = v;
  return CLineItem(width, offset, d, g, static_cast<int>(dashes.size()));
}

std::vector<Line> Draw(CLineItem item, const Coords& x, const Coords& y, RECT* clip = nullptr) {
  CRecordingDevice dc;
  item.Draw(&dc, RGB(255, 0, 0), x.data(), y.data(), static_cast<long>(x.size()), clip);
  return Lines(dc);
}

const double kDash30 = 300 * kTenth;  // 30.000000447034836
const double kGap10 = 100 * kTenth;   // 10.000000149011612

}  // namespace

TEST(LineItemDraw, PatternOnAStraightLineEndsWithTheDashCutAtTheEndPoint) {
  const auto lines = Draw(Item(1, 0, {300}, {100}), {0, 100}, {0, 0});
  ASSERT_EQ(lines.size(), 3u);
  // Eastwards the reversed direction is π, whose sine moves each step a few ulps below
  // the axis.
  double x = 0, y = 0;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(lines[i].x, (Coords{x, x + kDash30}));
    EXPECT_EQ(lines[i].y, (Coords{y, y - kSinPi * kDash30}));
    x = x + kDash30 + kGap10;
    y = y - kSinPi * kDash30 - kSinPi * kGap10;
  }
  EXPECT_EQ(lines[1].x[0], 40.00000059604645);
  EXPECT_EQ(lines[2].x, (Coords{x, 100}));
  EXPECT_EQ(lines[2].y, (Coords{y, 0}));
}

TEST(LineItemDraw, DashCrossingAVertexIsTwoPiecesAndTheRemainderTurnsTheCorner) {
  const auto lines = Draw(Item(1, 0, {300}, {100}), {0, 20, 20}, {0, 0, 50});
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].x, (Coords{0, 20}));
  EXPECT_EQ(lines[0].y, (Coords{0, 0}));
  // 10.000000447 of the first dash is left for the northward leg.
  const double rest = kDash30 - 20;
  EXPECT_EQ(lines[1].y, (Coords{0, rest}));
  EXPECT_EQ(lines[1].x[0], 20.0);
  EXPECT_NEAR(lines[1].x[1], 20.0, 1e-14);
  EXPECT_EQ(lines[2].y, (Coords{rest + kGap10, 50}));
  EXPECT_EQ(lines[2].x[1], 20.0);
}

TEST(LineItemDraw, ShortSegmentTakesDirectionZeroSoItsSignedLengthLengthensTheDash) {
  // From (0, 0) to (1e-6, 0) the direction is 0, not π: the signed distance is −1e-6,
  // and the dash grows by it instead of shrinking.
  const auto lines = Draw(Item(1, 0, {300}, {100}), {0, 0.000001, 100}, {0, 0, 0});
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[0].x, (Coords{0, 0.000001}));
  const double grown = kDash30 - (0 - 0.000001) / 1.0;
  EXPECT_EQ(lines[1].x, (Coords{0.000001, 0.000001 + grown}));
  EXPECT_NEAR(lines[1].x[1], 30.000002447034836, 1e-12);
}

TEST(LineItemDraw, AfterARejectedSegmentTheNextVisibleOneStartsWithADashOfTheRemainder) {
  RECT clip{0, 100, 200, -100};
  // 15 of the first dash drawn (cut at the clip's left edge), then a segment left of the
  // clip is skipped; the dash goes on, 15 long, from the start of the next segment.
  const auto lines = Draw(Item(1, 0, {300}, {100}), {5, -10, -10, 100}, {0, 0, 50, 50}, &clip);
  ASSERT_GE(lines.size(), 3u);
  EXPECT_EQ(lines[0].x, (Coords{5, 0}));
  const double rest = kDash30 - 15;
  EXPECT_EQ(lines[1].x, (Coords{0, -10 + rest}));
  EXPECT_EQ(lines[1].x[1], 5.000000447034836);
  EXPECT_EQ(lines[1].y, (Coords{50, 50}));
  EXPECT_EQ(lines[2].x, (Coords{-10 + rest + kGap10, -10 + rest + kGap10 + kDash30}));
}

TEST(LineItemDraw, RejectionDuringAGapRestartsWithTheDashThatPrecededIt) {
  RECT clip{0, 100, 101, -100};
  // The dash 70..100 ends, the gap runs past the clip's right edge; the next segment lies
  // right of the clip. The walk restarts in dash state with what was left of the last
  // dash, all 30 of it, drawn again from the start of the next visible segment.
  const auto lines = Draw(Item(1, 0, {300}, {100}), {70, 105, 105, 0}, {50, 50, 80, 80}, &clip);
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[0].x, (Coords{70, 70 + kDash30}));
  EXPECT_EQ(lines[1].x, (Coords{101, 105 - kDash30}));
  EXPECT_NEAR(lines[1].y[1], 80, 1e-13);
  EXPECT_EQ(lines[2].x[0], 105 - kDash30 - kGap10);
}

TEST(LineItemDraw, ZeroLengthDashOnAnAxisDoesNotStopTheLine) {
  // dash 10, gap 10, dash 0, gap 10: after the zero dash the gap's guard is widened by
  // 0 only, and the position lies ulps off the axis; the rounding allowance keeps going.
  auto lines = Draw(Item(1, 0, {100, 0}, {100, 100}), {0, 100}, {0, 0});
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[1].x[0], lines[1].x[1]);
  EXPECT_NEAR(lines[1].x[0], 20, 1e-6);
  EXPECT_NEAR(lines[5].x[0], 80, 1e-5);
  EXPECT_EQ(lines[6].x[1], 100.0);

  lines = Draw(Item(1, 0, {100, 0}, {100, 100}), {0, 0}, {0, 100});  // the same northwards
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[6].y[1], 100.0);
}

TEST(LineItemDraw, PairsFollowInTurnDashThenItsGap) {
  // The built-in 30 on, 5 off, 6 on, 50 off, 6 on, 5 off, on a line long enough for the
  // pattern to come round again.
  const auto lines = Draw(Item(1, 0, {300, 60, 60}, {50, 500, 50}), {0, 200}, {0, 0});
  ASSERT_EQ(lines.size(), 6u);
  const double starts[] = {0, 35, 91, 102, 137, 193};
  const double ends[] = {30, 41, 97, 132, 143, 199};
  for (int i = 0; i < 6; ++i) {
    EXPECT_NEAR(lines[i].x[0], starts[i], 1e-5) << i;
    EXPECT_NEAR(lines[i].x[1], ends[i], 1e-5) << i;
  }
}

TEST(LineItemDraw, NegativeLengthsCountAsZeroAndEveryPatternEnds) {
  // Dash −5 draws as a dot every gap.
  auto lines = Draw(Item(1, 0, {-50}, {10}), {0, 2.5}, {0, 0});
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[2].x[0], lines[2].x[1]);
  EXPECT_NEAR(lines[2].x[0], 2, 1e-6);
  // Nothing but zero once negatives count as 0: nothing drawn, no endless loop.
  EXPECT_TRUE(Draw(Item(1, 0, {-5}, {-5}), {0, 100}, {0, 0}).empty());
  // Gaps of 0 make contiguous dashes.
  lines = Draw(Item(1, 0, {300}, {0}), {0, 100}, {0, 0});
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[1].x[0], lines[0].x[1]);
  EXPECT_EQ(lines[3].x[1], 100.0);
}

TEST(LineItemDraw, EmptyItemsAndShortDashedLinesDrawNothing) {
  CRecordingDevice dc;
  const Coords x{0, 100}, y{0, 0};
  const TallyScope tally;
  Item(1, 0, {0, 0}, {100, 100}).Draw(&dc, 0, x.data(), y.data(), 2, nullptr);
  EXPECT_EQ(tally.Delta().pens.created, 0);  // empty: the device context is not touched
  Item(1, 0, {300}, {100}).Draw(&dc, 0, x.data(), y.data(), 1, nullptr);
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
  ExpectNothingLeft(tally.Delta());
}

TEST(LineItemDraw, OwnPenIsMadeAndDeletedANegativeWidthUsesTheSelectedPen) {
  CRecordingDevice dc;
  HPEN typePen = CreatePen(PS_SOLID, 7, RGB(0, 0, 255));
  SelectObject(&dc, typePen);
  const Coords x{0, 100}, y{0, 0};
  const TallyScope tally;
  Item(5, 0, {300}, {100}).Draw(&dc, RGB(1, 2, 3), x.data(), y.data(), 2, nullptr);
  ASSERT_EQ(dc.Primitives().size(), 3u);
  for (const RecordedPrimitive& p : dc.Primitives()) {
    EXPECT_EQ(p.pen.lopnStyle, static_cast<UINT>(PS_SOLID));
    EXPECT_EQ(p.pen.lopnWidth.x, 5);
    EXPECT_EQ(p.pen.lopnColor, RGB(1, 2, 3));
  }
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), typePen);
  EXPECT_EQ(tally.Delta().pens.created, 1);
  ExpectNothingLeft(tally.Delta());

  dc.Clear();
  Item(-1, 0, {}, {}).Draw(&dc, RGB(255, 0, 0), x.data(), y.data(), 2, nullptr);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  EXPECT_EQ(dc.Primitives()[0].pen.lopnWidth.x, 7);
  EXPECT_EQ(dc.Primitives()[0].pen.lopnColor, RGB(0, 0, 255));
  EXPECT_EQ(tally.Delta().pens.created, 1);
  SelectObject(&dc, GetStockObject(BLACK_PEN));
  DeleteObject(typePen);
}

// Where the offset path itself lies is the business of the double-line tests.
TEST(LineItemDraw, OffsetMovesContinuousAndDashedItemsRightOfTravel) {
  const double d = 150 * kTenth;
  auto lines = Draw(Item(0, 150, {}, {}), {0, 100, 100}, {0, 0, 100});
  ASSERT_EQ(lines.size(), 1u);
  ASSERT_EQ(lines[0].x.size(), 3u);
  EXPECT_EQ(lines[0].y[0], -d);
  EXPECT_EQ(lines[0].x[2], 100 + d);

  lines = Draw(Item(0, -150, {300}, {100}), {0, 100}, {0, 0});  // dashed, to the left
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].y[0], d);
  EXPECT_NEAR(lines[0].x[1], kDash30, 1e-12);
}

TEST(LineItemDraw, LongSegmentThroughASmallViewDrawsItsVisibleDashesQuickly) {
  RECT clip{0, 10, 100, 0};
  const auto start = std::chrono::steady_clock::now();
  const auto lines = Draw(Item(1, 0, {300}, {100}), {-1e9, 1e9}, {5, 5}, &clip);
  EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 2.0);
  ASSERT_GE(lines.size(), 2u);
  ASSERT_LE(lines.size(), 4u);
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    EXPECT_NEAR(lines[i + 1].x[0] - lines[i].x[1], kGap10, 1e-5);  // the pattern's gaps
    if (i > 0) {
      EXPECT_NEAR(lines[i].x[1] - lines[i].x[0], kDash30, 1e-5);
    }
  }
}
