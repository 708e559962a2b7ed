#include "suite/OldStyleSymbol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/RecordingDevice.h"

namespace {

using Coords = std::vector<double>;
constexpr double kPi = 3.14159265358979323846;

}  // namespace

TEST(DrawSymbol, SquareAndCrossAreCentredScaledAndDrawnWithTheGivenPen) {
  CRecordingDevice dc;
  HPEN pen = CreatePen(PS_SOLID, 2, RGB(0, 0, 255));
  DrawSymbol(&dc, 100, 200, 9, pen, 0.5, nullptr, 0, nullptr);  // half-size 6 × 0.5
  ASSERT_EQ(dc.Primitives().size(), 3u) << dc.ToString();
  EXPECT_EQ(dc.Primitives()[0].x, (Coords{97, 103, 103, 97, 97}));
  EXPECT_EQ(dc.Primitives()[0].y, (Coords{203, 203, 197, 197, 203}));
  EXPECT_EQ(dc.Primitives()[1].x, (Coords{100, 100}));
  EXPECT_EQ(dc.Primitives()[1].y, (Coords{203, 197}));
  EXPECT_EQ(dc.Primitives()[2].x, (Coords{103, 97}));
  EXPECT_EQ(dc.Primitives()[2].y, (Coords{200, 200}));
  for (const RecordedPrimitive& p : dc.Primitives()) {
    EXPECT_EQ(p.kind, PrimitiveKind::Polyline);
    EXPECT_EQ(p.pen.lopnColor, RGB(0, 0, 255));
  }
  EXPECT_NE(GetCurrentObject(&dc, OBJ_PEN), pen);  // the caller's pen is back
  EXPECT_TRUE(DeleteObject(pen));
}

// How many figures each index draws and how far from the point they reach (the half-size,
// twice it for the triangle's apex).
TEST(DrawSymbol, EachIndexHasItsFiguresAndSize) {
  const struct {
    int index;
    std::size_t figures;
    double reach;
  } cases[] = {{-1, 0, 0}, {0, 0, 0},   {1, 1, 6},   {2, 0, 0},   {3, 2, 160}, {4, 0, 0},   {5, 1, 6},
               {6, 2, 6},  {7, 1, 6},   {8, 1, 8},   {9, 3, 6},   {10, 3, 6},  {11, 2, 10}, {12, 1, 10},
               {13, 1, 10}, {14, 1, 12}, {15, 3, 10}, {16, 3, 10}, {17, 1, 10}, {18, 1, 20}, {19, 1, 6},
               {20, 0, 0}};
  for (const auto& c : cases) {
    CRecordingDevice dc;
    DrawSymbol(&dc, 0, 0, c.index, nullptr, 1.0, nullptr, 0, nullptr);
    ASSERT_EQ(dc.Primitives().size(), c.figures) << "symbol " << c.index;
    double reach = 0;
    for (const RecordedPrimitive& p : dc.Primitives())
      for (std::size_t i = 0; i < p.x.size(); ++i) reach = std::max({reach, std::fabs(p.x[i]), std::fabs(p.y[i])});
    EXPECT_EQ(reach, c.reach) << "symbol " << c.index;
  }
}

TEST(DrawSymbol, TurnsByTheAngleAndClips) {
  CRecordingDevice dc;
  DrawSymbol(&dc, 0, 0, 17, nullptr, 1.0, nullptr, kPi / 2, nullptr);  // tick, half-size 10
  ASSERT_EQ(dc.Primitives().size(), 1u);
  EXPECT_NEAR(dc.Primitives()[0].x[0], -10, 1e-12);  // the top of the tick turns left
  EXPECT_NEAR(dc.Primitives()[0].y[0], 0, 1e-12);
  dc.Clear();
  DrawSymbol(&dc, 0, 0, 8, nullptr, 1.0, nullptr, 0, nullptr);  // triangle, 4
  EXPECT_EQ(dc.Primitives().at(0).x, (Coords{0, -1.7205 * 4, 1.7205 * 4, 0}));
  EXPECT_EQ(dc.Primitives().at(0).y, (Coords{8, -4, -4, 8}));
  dc.Clear();
  const RECT clip{0, 100, 100, 0};
  DrawSymbol(&dc, 0, 50, 6, nullptr, 1.0, &clip, 0, nullptr);  // cross on the left edge
  ASSERT_EQ(dc.Primitives().size(), 2u);
  EXPECT_EQ(dc.Primitives()[1].x, (Coords{6, 0}));
}

TEST(DrawSymbol, CircleIsAClosedNineteenGonAndSymbolNineteenIsFilled) {
  CRecordingDevice dc;
  DrawSymbol(&dc, 0, 0, 7, nullptr, 1.0, nullptr, 0, nullptr);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  const RecordedPrimitive& circle = dc.Primitives()[0];
  ASSERT_EQ(circle.x.size(), 20u);
  EXPECT_EQ(circle.x.front(), 6);
  EXPECT_EQ(circle.x.back(), 6);
  EXPECT_EQ(circle.y.back(), 0);
  EXPECT_NEAR(std::hypot(circle.x[7], circle.y[7]), 6, 1e-12);

  dc.Clear();
  const GdiObjectTally before = GdiObjectCounts();
  const COLORREF green = RGB(0, 128, 0);
  DrawSymbol(&dc, 0, 0, 19, nullptr, 1.0, nullptr, 0, &green);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  EXPECT_EQ(dc.Primitives()[0].kind, PrimitiveKind::Polygon);
  EXPECT_EQ(dc.Primitives()[0].brush.lbColor, green);
  EXPECT_EQ(dc.Primitives()[0].x.size(), 19u);  // the closing point is implied
  EXPECT_EQ((GdiObjectCounts() - before).Live(), 0);
}
