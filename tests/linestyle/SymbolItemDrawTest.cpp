#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

#include "DrawTestSupport.h"
#include "linestyle/SymbolItem.h"

using namespace drawtest;

namespace {

struct FigurePoint {
  int x, y;
  signed char penDown;
};

CSymbolItem Figure(std::initializer_list<FigurePoint> points, int mode = 0, int interval = 1000, int start = 0) {
  CSymbolItem item;
  item.m_nMode = mode;
  item.m_nInterval = interval;
  item.m_nStart = start;
  item.m_nPenWidth = 2;
  item.m_nPoints = 0;
  for (const FigurePoint& p : points) {
    item.m_ptPoints[item.m_nPoints] = {p.x, p.y};
    item.m_bPenDown[item.m_nPoints] = p.penDown;
    ++item.m_nPoints;
  }
  return item;
}

// A stroke from the placement point to 10 units ahead along the figure's x axis.
CSymbolItem Tick(int mode = 0, int interval = 1000, int start = 0) { return Figure({{100, 0, 1}}, mode, interval, start); }

std::vector<Line> DrawLine(CSymbolItem item, const Coords& x, const Coords& y, double angle = 0,
                           RECT* clip = nullptr) {
  CRecordingDevice dc;
  item.Draw(&dc, RGB(0, 128, 0), x.data(), y.data(), static_cast<long>(x.size()), clip, 1.0, angle);
  return Lines(dc);
}

std::vector<Line> DrawPoint(CSymbolItem item, double x, double y, double angle = 0) {
  CRecordingDevice dc;
  item.Draw(&dc, RGB(0, 128, 0), x, y, nullptr, 1.0, angle);
  return Lines(dc);
}

const double kTen = 100 * kTenth;  // 10.000000149011612

// The direction in which a tick points.
double Heading(const Line& line) { return std::atan2(line.y[1] - line.y[0], line.x[1] - line.x[0]); }

}  // namespace

TEST(SymbolItemDraw, EveryIntervalAlongTheLineFromItsFirstPoint) {
  const auto lines = DrawLine(Tick(), {0, 250}, {0, 0});
  ASSERT_EQ(lines.size(), 3u);
  const double interval = 1000 * kTenth;  // 100.00000149011612
  EXPECT_EQ(lines[0].x, (Coords{0, kTen}));
  EXPECT_EQ(lines[0].y, (Coords{0, 0}));
  EXPECT_EQ(lines[1].x, (Coords{interval, interval + kTen}));
  EXPECT_EQ(lines[1].y[0], -kSinPi * interval);
  EXPECT_EQ(lines[2].x[0], 200.00000298023224);
}

TEST(SymbolItemDraw, StartIsAPercentageOfTheIntervalInWholeTenths) {
  auto lines = DrawLine(Tick(0, 1000, 50), {0, 250}, {0, 0});
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].x[0], 50.00000074505806);
  EXPECT_EQ(lines[1].x[0], 50.00000074505806 + 100.00000149011612);

  // 33 % of 7 tenths is 231 / 100 = 2 tenths, as an integer division truncates.
  lines = DrawLine(Tick(0, 7, 33), {0, 1}, {0, 0});
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].x[0], 2 * kTenth);
  EXPECT_EQ(lines[1].x[0], 2 * kTenth + 7 * kTenth);

  // A start percentage and interval whose product passes the int range still divides right.
  lines = DrawLine(Tick(0, 2000000000, 100), {0, 3e8}, {0, 0});
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].x[0], static_cast<double>(2e9f) * kTenth);

  // A negative start (from an archive) counts as the line's first point.
  lines = DrawLine(Tick(0, 1000, -50), {0, 150}, {0, 0});
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].x[0], 0.0);
}

TEST(SymbolItemDraw, RemainingDistanceCarriesOverAVertexAndTheFigureTurnsWithItsSegment) {
  auto lines = DrawLine(Tick(), {0, 50, 50}, {0, 0, 100});
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(Heading(lines[0]), 0.0);
  EXPECT_EQ(lines[1].y[0], 100.00000149011612 - 50);
  EXPECT_NEAR(lines[1].x[0], 50, 1e-12);
  EXPECT_EQ(lines[1].y[1] - lines[1].y[0], kTen);  // pointing north
  EXPECT_NEAR(lines[1].x[1], lines[1].x[0], 1e-12);

  lines = DrawLine(Tick(), {0, 150}, {0, 0}, kPi / 2);  // the extra angle turns every figure
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NEAR(Heading(lines[1]), kPi / 2, 1e-12);
}

TEST(SymbolItemDraw, VertexModesPlaceAtFirstLastAndInteriorPoints) {
  // 2: at the last point, turned to the last segment.
  auto lines = DrawLine(Tick(2), {0, 100}, {0, 0});
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].x, (Coords{100, 100 + kTen}));
  // 4 needs an interior vertex.
  EXPECT_TRUE(DrawLine(Tick(4), {0, 100}, {0, 0}).empty());
  // 7: every vertex; the interior one on the corner's bisector.
  lines = DrawLine(Tick(7), {0, 100, 100}, {0, 0, 100});
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].x[0], 0.0);
  EXPECT_EQ(Heading(lines[0]), 0.0);
  EXPECT_EQ(lines[1].x[0], 100.0);
  EXPECT_NEAR(Heading(lines[1]), kPi / 4, 1e-12);
  EXPECT_EQ(lines[2].y[0], 100.0);
  EXPECT_NEAR(Heading(lines[2]), kPi / 2, 1e-12);
  // 5: first and interior; 6: last and interior.
  EXPECT_EQ(DrawLine(Tick(5), {0, 10, 20, 30}, {0, 0, 0, 0}).size(), 3u);
  lines = DrawLine(Tick(6), {0, 10, 20, 30}, {0, 0, 0, 0});
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].x[0], 10.0);
  EXPECT_EQ(lines[2].x[0], 30.0);
}

TEST(SymbolItemDraw, SinglePointIsDrawnTurnedToTheExtraAngle) {
  // By interval with start 0, or by vertex with the first-point bit.
  for (int mode : {0, 1, 3}) {
    const auto lines = DrawPoint(Tick(mode), 5, 6, 0.5);
    ASSERT_EQ(lines.size(), 1u) << mode;
    EXPECT_EQ(lines[0].x[0], 5.0);
    EXPECT_EQ(lines[0].y[0], 6.0);
    EXPECT_NEAR(Heading(lines[0]), 0.5, 1e-12);
  }
  EXPECT_TRUE(DrawPoint(Tick(0, 1000, 50), 5, 6).empty());  // a start other than 0
  EXPECT_TRUE(DrawPoint(Tick(0, 0), 5, 6).empty());         // an interval below 1
  EXPECT_TRUE(DrawPoint(Tick(2), 5, 6).empty());            // no first-point bit
  EXPECT_TRUE(DrawLine(Tick(0, 0), {0, 100}, {0, 0}).empty());
}

TEST(SymbolItemDraw, PenUpPointsSplitTheFigureIntoRunsAndAPenDownStartStrokesFromTheOrigin) {
  // Flags other than 1 are pen-up, too.
  const auto split = DrawPoint(
      Figure({{100, 0, 0}, {100, 100, 1}, {0, 100, 1}, {-100, 0, 2}, {-100, -100, 1}, {0, -100, 0}}), 0, 0);
  ASSERT_EQ(split.size(), 2u);
  EXPECT_EQ(split[0].x, (Coords{kTen, kTen, 0}));
  EXPECT_EQ(split[0].y, (Coords{0, kTen, kTen}));
  EXPECT_EQ(split[1].x, (Coords{-kTen, -kTen}));
  EXPECT_EQ(split[1].y, (Coords{0, -kTen}));

  const auto joined = DrawPoint(Figure({{100, 0, 1}, {100, 100, 1}}), 0, 0);
  ASSERT_EQ(joined.size(), 1u);
  EXPECT_EQ(joined[0].x, (Coords{0, kTen, kTen}));

  EXPECT_TRUE(DrawPoint(Figure({}), 0, 0).empty());
  EXPECT_TRUE(DrawPoint(Figure({{100, 0, 0}}), 0, 0).empty());
}

TEST(SymbolItemDraw, ShiftMovesTheOriginToTheRightOfTheFigureAndScalesMultiply) {
  CSymbolItem item = Tick();
  item.m_nShift = 50;
  item.m_dScale = 2;
  CRecordingDevice dc;
  item.Draw(&dc, 0, 0.0, 0.0, nullptr, 1.5, 0);
  const auto lines = Lines(dc);
  ASSERT_EQ(lines.size(), 1u);
  const double shift = 50 * kTenth;
  EXPECT_EQ(lines[0].x, (Coords{0, kTen * 3}));
  EXPECT_EQ(lines[0].y, (Coords{-shift, -shift}));  // not scaled
  EXPECT_EQ(item.m_dScale, 2.0);
}

TEST(SymbolItemDraw, FilledFigureIsAPolygonWithNoVisibleOutlineAnOpenOneIsStroked) {
  // The built-in filled triangle: scale 2, points (50, 86), (100, 0), (0, 0), all pen-down.
  CSymbolItem item = Figure({{50, 86, 1}, {100, 0, 1}, {0, 0, 1}});
  item.m_dScale = 2;
  item.m_nFill = 1;
  CRecordingDevice dc;
  const HGDIOBJ pen = GetCurrentObject(&dc, OBJ_PEN);
  const HGDIOBJ brush = GetCurrentObject(&dc, OBJ_BRUSH);
  const TallyScope tally;
  item.Draw(&dc, RGB(10, 20, 30), 10.0, 20.0, nullptr, 1.0, 0);
  ASSERT_EQ(dc.Primitives().size(), 1u) << dc.ToString();
  const RecordedPrimitive& p = dc.Primitives()[0];
  EXPECT_EQ(p.kind, PrimitiveKind::Polygon);
  EXPECT_EQ(p.pen.lopnStyle, static_cast<UINT>(PS_NULL));
  EXPECT_EQ(p.brush.lbStyle, BS_SOLID);
  EXPECT_EQ(p.brush.lbColor, RGB(10, 20, 30));
  ASSERT_GE(p.x.size(), 3u);
  EXPECT_EQ(p.x[1], 10 + 50 * kTenth * 2);
  EXPECT_EQ(p.y[1], 20 + 86 * static_cast<double>(0.1f) * 2);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_PEN), pen);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_BRUSH), brush);
  EXPECT_EQ(tally.Delta().pens.created, 1);
  EXPECT_EQ(tally.Delta().brushes.created, 1);

  dc.Clear();
  Tick().Draw(&dc, RGB(10, 20, 30), 0.0, 0.0, nullptr, 1.0, 0);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  const RecordedPrimitive& open = dc.Primitives()[0];
  EXPECT_EQ(open.kind, PrimitiveKind::Polyline);
  EXPECT_EQ(open.pen.lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(open.pen.lopnWidth.x, 2);
  EXPECT_EQ(open.pen.lopnColor, RGB(10, 20, 30));
  EXPECT_EQ(tally.Delta().brushes.created, 1);
  ExpectNothingLeft(tally.Delta());
}
