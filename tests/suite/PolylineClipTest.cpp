#include "suite/PolylineClip.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "platform/RecordingDevice.h"

namespace {

using Coords = std::vector<double>;

// left, top, right, bottom with top the larger y.
constexpr RECT kBox{0, 10, 20, 0};

struct Drawn {
  Coords x, y;
};

int Clip(CRecordingDevice& dc, const Coords& x, const Coords& y, const RECT* clip, int fill = 0,
         const COLORREF* colour = nullptr) {
  return PolylineClip(&dc, x.data(), y.data(), static_cast<long>(x.size()), clip, fill, colour);
}

Drawn Primitive(const CRecordingDevice& dc, std::size_t i) {
  return {dc.Primitives().at(i).x, dc.Primitives().at(i).y};
}

}  // namespace

TEST(PolylineClip, SegmentCrossingTheRectangleTwiceIsCutAtBothEdges) {
  CRecordingDevice dc;
  EXPECT_EQ(Clip(dc, {-10, 30}, {5, 5}, &kBox), 1);
  ASSERT_EQ(dc.Primitives().size(), 1u) << dc.ToString();
  EXPECT_EQ(dc.Primitives()[0].kind, PrimitiveKind::Polyline);
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{0, 20}));
  EXPECT_EQ(Primitive(dc, 0).y, (Coords{5, 5}));

  dc.Clear();  // a diagonal through two corners' neighbourhoods: cut at left and top
  Clip(dc, {-5, 15}, {0, 20}, &kBox);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{0, 5}));
  EXPECT_EQ(Primitive(dc, 0).y, (Coords{5, 10}));
}

TEST(PolylineClip, PolylineEntirelyOutsideDrawsNothing) {
  CRecordingDevice dc;
  // Around the rectangle without touching it; the last segment passes just outside the
  // top right corner.
  EXPECT_EQ(Clip(dc, {-5, -5, 25, 25, 30, 15}, {-5, 15, 15, -5, 5, 15}, &kBox), 0);
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
}

TEST(PolylineClip, VisiblePiecesJoinOnlyAtUncutVertices) {
  CRecordingDevice dc;
  // In, in, out and back in: the first two segments make one run, the re-entry a second.
  EXPECT_EQ(Clip(dc, {2, 8, 15, 15, 30, 10}, {2, 2, 8, 15, 15, 5}, &kBox), 2);
  ASSERT_EQ(dc.Primitives().size(), 2u) << dc.ToString();
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{2, 8, 15, 15}));
  EXPECT_EQ(Primitive(dc, 0).y, (Coords{2, 2, 8, 10}));
  EXPECT_EQ(Primitive(dc, 1).x, (Coords{20, 10}));
  EXPECT_EQ(Primitive(dc, 1).y, (Coords{10, 5}));
}

TEST(PolylineClip, PiecesCutAtTheSameBoundaryPointStaySeparate) {
  CRecordingDevice dc;
  // Leaves through the right edge and comes straight back through the same point.
  EXPECT_EQ(Clip(dc, {10, 30, 10}, {5, 5, 5}, &kBox), 2);
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{10, 20}));
  EXPECT_EQ(Primitive(dc, 1).x, (Coords{20, 10}));
}

TEST(PolylineClip, BoundaryIsInsideAndAnInvertedRectangleMeansTheSameArea) {
  CRecordingDevice dc;
  EXPECT_EQ(Clip(dc, {0, 20}, {10, 10}, &kBox), 1);  // along the top edge
  const RECT upsideDown{0, 0, 20, 10};
  dc.Clear();
  EXPECT_EQ(Clip(dc, {-10, 30}, {5, 5}, &upsideDown), 1);
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{0, 20}));
}

TEST(PolylineClip, WithoutRectangleCoordinatesBeyondTheIntegerRangeAreCut) {
  CRecordingDevice dc;
  EXPECT_EQ(Clip(dc, {-1e300, 1e300}, {0, 0}, nullptr), 1);
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{-2147483648.0, 2147483647.0}));
  EXPECT_EQ(Primitive(dc, 0).y, (Coords{0, 0}));

  dc.Clear();  // differences that overflow a double: located coarsely, but in the box
  const double big = std::numeric_limits<double>::max();
  EXPECT_EQ(Clip(dc, {-big, big}, {-big, big}, &kBox), 1);
  for (const double x : Primitive(dc, 0).x) EXPECT_TRUE(x >= 0 && x <= 20) << x;
  for (const double y : Primitive(dc, 0).y) EXPECT_TRUE(y >= 0 && y <= 10) << y;

  dc.Clear();
  EXPECT_EQ(Clip(dc, {5, 5}, {-1e12, 3e9}, nullptr), 1);
  EXPECT_EQ(Primitive(dc, 0).y, (Coords{-2147483648.0, 2147483647.0}));
}

TEST(PolylineClip, NonFiniteVerticesBreakTheLineWithoutDrawingThem) {
  CRecordingDevice dc;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Clip(dc, {1, 2, nan, 4, 5, inf, 7, 8}, {1, 1, 1, 1, 1, 1, 1, 1}, &kBox), 3);
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{1, 2}));
  EXPECT_EQ(Primitive(dc, 1).x, (Coords{4, 5}));
  EXPECT_EQ(Primitive(dc, 2).x, (Coords{7, 8}));
  dc.Clear();
  EXPECT_EQ(Clip(dc, {nan, 7, 8}, {1, 1, 1}, &kBox), 1);
  EXPECT_EQ(Primitive(dc, 0).x, (Coords{7, 8}));
}

TEST(PolylineClip, RefusesWhatCannotBeALine) {
  CRecordingDevice dc;
  const double x[] = {1, 2};
  EXPECT_EQ(PolylineClip(&dc, x, x, 1, &kBox, 0, nullptr), 0);
  EXPECT_EQ(PolylineClip(&dc, x, x, -5, &kBox, 1, nullptr), 0);
  EXPECT_EQ(PolylineClip(&dc, nullptr, x, 2, &kBox, 0, nullptr), 0);
  EXPECT_EQ(PolylineClip(nullptr, x, x, 2, &kBox, 0, nullptr), 0);
  EXPECT_EQ(dc.PrimitiveCount(), 0u);
}

TEST(PolylineClipFill, PolygonIsCutToTheRectangleAndFilledInTheGivenColour) {
  CRecordingDevice dc;
  HBRUSH own = CreateSolidBrush(RGB(1, 2, 3));
  HGDIOBJ before = SelectObject(&dc, own);
  const GdiObjectTally tally = GdiObjectCounts();
  const COLORREF red = RGB(255, 0, 0);
  // A triangle whose apex sticks out through the top edge.
  EXPECT_EQ(Clip(dc, {5, 15, 10}, {2, 2, 18}, &kBox, 1, &red), 1);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  const RecordedPrimitive& p = dc.Primitives()[0];
  EXPECT_EQ(p.kind, PrimitiveKind::Polygon);
  EXPECT_EQ(p.brush.lbStyle, BS_SOLID);
  EXPECT_EQ(p.brush.lbColor, red);
  // The apex is replaced by the top edge between the two crossings; the outline keeps the
  // triangle's counter-clockwise turn.
  EXPECT_EQ(p.x, (Coords{7.5, 5, 15, 12.5}));
  EXPECT_EQ(p.y, (Coords{10, 2, 2, 10}));
  // The temporary brush is gone and the caller's brush is back.
  const GdiObjectTally used = GdiObjectCounts() - tally;
  EXPECT_EQ(used.brushes.created, 1);
  EXPECT_EQ(used.brushes.Live(), 0);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_BRUSH), own);
  SelectObject(&dc, before);
  DeleteObject(own);
}

TEST(PolylineClipFill, PolygonAroundTheRectangleBecomesTheRectangleInTheCurrentBrush) {
  CRecordingDevice dc;
  const GdiObjectTally tally = GdiObjectCounts();
  EXPECT_EQ(Clip(dc, {-50, 50, 50, -50, -50}, {-50, -50, 50, 50, -50}, &kBox, 1), 1);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  const RecordedPrimitive& p = dc.Primitives()[0];
  EXPECT_EQ(p.x, (Coords{0, 0, 20, 20}));
  EXPECT_EQ(p.y, (Coords{10, 0, 0, 10}));
  EXPECT_EQ(p.brush.lbColor, RGB(255, 255, 255));  // the device's white stock brush
  EXPECT_EQ((GdiObjectCounts() - tally).brushes.created, 0);
}

TEST(PolylineClipFill, PolygonOutsideOrDegenerateDrawsNothing) {
  CRecordingDevice dc;
  const GdiObjectTally tally = GdiObjectCounts();
  const COLORREF blue = RGB(0, 0, 255);
  EXPECT_EQ(Clip(dc, {30, 40, 35}, {0, 0, 5}, &kBox, 1, &blue), 0);
  EXPECT_EQ(Clip(dc, {1, 5, 1}, {1, 5, 1}, &kBox, 1, &blue), 0);  // two distinct points
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Clip(dc, {1, nan, 5, 1}, {1, 3, 5, 9}, &kBox, 1), 1);  // NaN vertex left out
  EXPECT_EQ(dc.Primitives().at(0).x, (Coords{1, 5, 1}));
  EXPECT_EQ((GdiObjectCounts() - tally).brushes.created, 0);
}

TEST(GetClipBounds, TakesTheRectangleOrElseTheDeviceClipBox) {
  CRecordingDevice dc;
  dc.SetClipBox(RECT{-5, 40, 60, -7});
  RECT out{};
  RECT clip{1, 2, 3, 4};
  EXPECT_EQ(GetClipBounds(&out, &dc, &clip), &out);
  EXPECT_EQ(out.left, 1);
  EXPECT_EQ(out.bottom, 4);
  GetClipBounds(&out, &dc, nullptr);
  EXPECT_EQ(out.left, -5);
  EXPECT_EQ(out.top, 40);
  EXPECT_EQ(out.right, 60);
  EXPECT_EQ(out.bottom, -7);
  GetClipBounds(&out, nullptr, nullptr);
  EXPECT_EQ(out.left, std::numeric_limits<LONG>::min());
  EXPECT_EQ(out.top, std::numeric_limits<LONG>::max());
  EXPECT_EQ(GetClipBounds(nullptr, &dc, &clip), nullptr);
}
