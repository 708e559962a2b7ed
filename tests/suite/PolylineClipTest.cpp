#include "suite/PolylineClip.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>
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

// Allocations are counted only while a test asks for it: the replaced operators serve the
// whole test program.
std::atomic<bool> g_counting{false};
std::atomic<long> g_allocations{0};

void* Allocate(std::size_t size) {
  if (g_counting.load(std::memory_order_relaxed)) g_allocations.fetch_add(1, std::memory_order_relaxed);
  return std::malloc(size == 0 ? 1 : size);
}

// Out of line, so that the compiler does not pair an inlined free with operator new.
[[gnu::noinline]] void Release(void* p) { std::free(p); }

class AllocationCount {
 public:
  AllocationCount() {
    g_allocations = 0;
    g_counting = true;
  }
  ~AllocationCount() { g_counting = false; }
  long Value() const { return g_allocations; }
};

// Keeps only where the last primitive's points were and how many there were, so that
// drawing through it allocates nothing of its own.
class PointerDevice : public GdiDevice {
 public:
  void DrawPolyline(const double* x, const double* y, int count) override { Keep(x, y, count); }
  void DrawPolygon(const double* x, const double* y, int count) override { Keep(x, y, count); }
  void DrawRectangle(int, int, int, int) override {}
  void DrawEllipse(int, int, int, int) override {}
  void DrawString(int, int, std::u16string_view) override {}
  SIZE TextExtent(const LOGFONTW&, std::u16string_view) const override { return {}; }
  TEXTMETRICW TextMetrics(const LOGFONTW&) const override { return {}; }
  std::u16string FaceName(const LOGFONTW&) const override { return {}; }
  RECT ClipBox() const override { return kBox; }

  const double* x = nullptr;
  const double* y = nullptr;
  int count = 0;
  int calls = 0;

 private:
  void Keep(const double* px, const double* py, int n) {
    x = px;
    y = py;
    count = n;
    ++calls;
  }
};

// Vertices 0 … n - 1 zigzag between y 2 and 4 across the rectangle, x = i / 10.
void Zigzag(long n, Coords* x, Coords* y) {
  x->clear();
  y->clear();
  for (long i = 0; i < n; ++i) {
    x->push_back(static_cast<double>(i) / 10);
    y->push_back(i % 2 ? 4 : 2);
  }
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* p = Allocate(size)) return p;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
  if (void* p = Allocate(size)) return p;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* p) noexcept { Release(p); }
void operator delete[](void* p) noexcept { Release(p); }
void operator delete(void* p, std::size_t) noexcept { Release(p); }
void operator delete[](void* p, std::size_t) noexcept { Release(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Release(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Release(p); }

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

TEST(PolylineClipAllocation, InsideFiguresReachTheDeviceAsGivenAndShortCutsStayOffTheHeap) {
  PointerDevice dc;
  const double x[] = {1, 5, 9, 1};
  const double y[] = {1, 8, 1, 1};
  const double farX[] = {-5, 5, 9};
  const double farY[] = {5, 5, 30};
  struct Call {
    int drawn;
    const double* x;
    const double* y;
    int count;
  } calls[5];
  long allocations = 0;
  {
    const AllocationCount count;
    auto call = [&](const double* px, const double* py, long n, int fill) {
      const int drawn = PolylineClip(&dc, px, py, n, &kBox, fill, nullptr);
      return Call{drawn, dc.x, dc.y, dc.count};
    };
    calls[0] = call(x, y, 4, 0);
    calls[1] = call(x, y, 3, 1);  // a polygon without a closing point
    calls[2] = call(x, y, 4, 1);  // the closing point is dropped
    calls[3] = call(farX, farY, 3, 0);
    calls[4] = call(farX, farY, 3, 1);
    allocations = count.Value();
  }
  EXPECT_EQ(allocations, 0);
  for (const Call& c : calls) EXPECT_EQ(c.drawn, 1);
  EXPECT_EQ(calls[0].x, x);
  EXPECT_EQ(calls[0].y, y);
  EXPECT_EQ(calls[0].count, 4);
  EXPECT_EQ(calls[1].x, x);
  EXPECT_EQ(calls[1].y, y);
  EXPECT_EQ(calls[1].count, 3);
  EXPECT_EQ(calls[2].count, 3);
  EXPECT_NE(calls[2].x, x);
  EXPECT_EQ(calls[3].count, 3);
  EXPECT_EQ(calls[4].count, 4);
  EXPECT_EQ(dc.calls, 5);
}

TEST(PolylineClip, LongCutRunsAndPolygonsKeepEveryPoint) {
  CRecordingDevice dc;
  Coords x, y;
  Zigzag(150, &x, &y);
  x[0] = -0.1;  // the first segment enters through the left edge half way, at y 2
  y[0] = 0;
  EXPECT_EQ(Clip(dc, x, y, &kBox), 1);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  Coords wantX = x, wantY = y;
  wantX[0] = 0;
  wantY[0] = 2;
  const Drawn run = Primitive(dc, 0);
  EXPECT_EQ(run.x, wantX);
  EXPECT_EQ(run.y, wantY);

  // A polygon of the zigzag's top side closed along y 1, with one vertex above the top edge.
  dc.Clear();
  Zigzag(150, &x, &y);
  x.push_back(14.9);
  y.push_back(1);
  x.push_back(0);
  y.push_back(1);
  y[75] = 14;  // a spike between (7.4, 2) and (7.6, 2), cut off at the top edge
  EXPECT_EQ(Clip(dc, x, y, &kBox, 1), 1);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  const Drawn polygon = Primitive(dc, 0);
  ASSERT_EQ(polygon.x.size(), 153u);
  EXPECT_EQ(Coords(polygon.x.begin(), polygon.x.begin() + 75), Coords(x.begin(), x.begin() + 75));
  EXPECT_EQ(polygon.y[75], 10);
  EXPECT_EQ(polygon.y[76], 10);
  EXPECT_EQ(Coords(polygon.x.begin() + 77, polygon.x.end()), Coords(x.begin() + 76, x.end()));
  EXPECT_EQ(Coords(polygon.y.begin() + 77, polygon.y.end()), Coords(y.begin() + 76, y.end()));
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
