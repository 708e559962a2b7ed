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

struct Drawn {
  Coords x, y;
  bool operator==(const Drawn&) const = default;
};

void PrintTo(const Drawn& d, std::ostream* os) {
  for (std::size_t i = 0; i < d.x.size(); ++i) *os << "(" << d.x[i] << ", " << d.y.at(i) << ") ";
}

// left, top, right, bottom with top the larger y.
constexpr RECT kBox{0, 10, 20, 0};
const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

int Clip(CRecordingDevice& dc, const Coords& x, const Coords& y, const RECT* clip, int fill = 0,
         const COLORREF* colour = nullptr) {
  return PolylineClip(&dc, x.data(), y.data(), static_cast<long>(x.size()), clip, fill, colour);
}

std::vector<Drawn> Figures(const CRecordingDevice& dc) {
  std::vector<Drawn> figures;
  for (const RecordedPrimitive& p : dc.Primitives()) figures.push_back({p.x, p.y});
  return figures;
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

// Open lines are cut per segment; visible pieces join only where they meet at an uncut
// vertex. Polygons are cut as a whole, an edge of the rectangle replacing what lies
// outside. The boundary is inside; without a rectangle the bounds are the integer range.
TEST(PolylineClip, DrawsExactlyThePartsInsideTheRectangle) {
  const RECT upsideDown{0, 0, 20, 10};
  const struct {
    const char* what;
    Coords x, y;
    const RECT* clip;
    int fill;
    std::vector<Drawn> drawn;
  } cases[] = {
      {"cut at both edges", {-10, 30}, {5, 5}, &kBox, 0, {{{0, 20}, {5, 5}}}},
      {"cut at left and top", {-5, 15}, {0, 20}, &kBox, 0, {{{0, 5}, {5, 10}}}},
      {"round the outside, past a corner", {-5, -5, 25, 25, 30, 15}, {-5, 15, 15, -5, 5, 15}, &kBox, 0, {}},
      {"in, out and back in", {2, 8, 15, 15, 30, 10}, {2, 2, 8, 15, 15, 5}, &kBox, 0,
       {{{2, 8, 15, 15}, {2, 2, 8, 10}}, {{20, 10}, {10, 5}}}},
      {"out and back through one point", {10, 30, 10}, {5, 5, 5}, &kBox, 0, {{{10, 20}, {5, 5}}, {{20, 10}, {5, 5}}}},
      {"along the top edge", {0, 20}, {10, 10}, &kBox, 0, {{{0, 20}, {10, 10}}}},
      {"inverted rectangle", {-10, 30}, {5, 5}, &upsideDown, 0, {{{0, 20}, {5, 5}}}},
      {"no rectangle, x", {-1e300, 1e300}, {0, 0}, nullptr, 0, {{{-2147483648.0, 2147483647.0}, {0, 0}}}},
      {"no rectangle, y", {5, 5}, {-1e12, 3e9}, nullptr, 0, {{{5, 5}, {-2147483648.0, 2147483647.0}}}},
      {"non-finite vertices break the line", {1, 2, kNan, 4, 5, kInf, 7, 8}, Coords(8, 1), &kBox, 0,
       {{{1, 2}, {1, 1}}, {{4, 5}, {1, 1}}, {{7, 8}, {1, 1}}}},
      {"non-finite first vertex", {kNan, 7, 8}, {1, 1, 1}, &kBox, 0, {{{7, 8}, {1, 1}}}},
      {"polygon around the rectangle", {-50, 50, 50, -50, -50}, {-50, -50, 50, 50, -50}, &kBox, 1,
       {{{0, 0, 20, 20}, {10, 0, 0, 10}}}},
      // The apex is replaced by the top edge; the outline keeps the counter-clockwise turn.
      {"polygon with its apex cut", {5, 15, 10}, {2, 2, 18}, &kBox, 1, {{{7.5, 5, 15, 12.5}, {10, 2, 2, 10}}}},
      {"polygon outside", {30, 40, 35}, {0, 0, 5}, &kBox, 1, {}},
      {"polygon of two distinct points", {1, 5, 1}, {1, 5, 1}, &kBox, 1, {}},
      {"polygon without its non-finite vertex", {1, kNan, 5, 1}, {1, 3, 5, 9}, &kBox, 1, {{{1, 5, 1}, {1, 5, 9}}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    CRecordingDevice dc;
    EXPECT_EQ(Clip(dc, c.x, c.y, c.clip, c.fill), static_cast<int>(c.drawn.size()));
    EXPECT_EQ(Figures(dc), c.drawn);
    for (const RecordedPrimitive& p : dc.Primitives())
      EXPECT_EQ(p.kind, c.fill ? PrimitiveKind::Polygon : PrimitiveKind::Polyline);
  }
}

// Differences that overflow a double are located coarsely, but inside the rectangle.
TEST(PolylineClip, EndsAtTheLimitsOfDoubleStayInTheRectangle) {
  CRecordingDevice dc;
  const double big = std::numeric_limits<double>::max();
  EXPECT_EQ(Clip(dc, {-big, big}, {-big, big}, &kBox), 1);
  for (const double x : dc.Primitives().at(0).x) EXPECT_TRUE(x >= 0 && x <= 20) << x;
  for (const double y : dc.Primitives().at(0).y) EXPECT_TRUE(y >= 0 && y <= 10) << y;
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

// A colour gets a solid brush of its own for the call; without one the current brush
// fills. Either way the caller's brush is selected afterwards and nothing is left over.
TEST(PolylineClipFill, ColourGetsATemporaryBrushAndTheCurrentOneIsBack) {
  CRecordingDevice dc;
  HBRUSH own = CreateSolidBrush(RGB(1, 2, 3));
  HGDIOBJ before = SelectObject(&dc, own);
  const GdiObjectTally tally = GdiObjectCounts();
  const COLORREF red = RGB(255, 0, 0);
  EXPECT_EQ(Clip(dc, {5, 15, 10}, {2, 2, 18}, &kBox, 1, &red), 1);
  EXPECT_EQ(Clip(dc, {5, 15, 10}, {2, 2, 8}, &kBox, 1), 1);
  EXPECT_EQ(Clip(dc, {30, 40, 35}, {0, 0, 5}, &kBox, 1, &red), 0);
  ASSERT_EQ(dc.Primitives().size(), 2u);
  EXPECT_EQ(dc.Primitives()[0].brush.lbStyle, BS_SOLID);
  EXPECT_EQ(dc.Primitives()[0].brush.lbColor, red);
  EXPECT_EQ(dc.Primitives()[1].brush.lbColor, RGB(1, 2, 3));
  const GdiObjectTally used = GdiObjectCounts() - tally;
  EXPECT_EQ(used.brushes.created, 1);
  EXPECT_EQ(used.brushes.Live(), 0);
  EXPECT_EQ(GetCurrentObject(&dc, OBJ_BRUSH), own);
  SelectObject(&dc, before);
  DeleteObject(own);
}

// Drawing line types must not reach the heap for each figure: neither figures inside,
// passed on as given, nor short ones that are cut.
TEST(PolylineClip, ShortFiguresAreDrawnWithoutTheHeap) {
  CRecordingDevice dc;
  dc.SetRecording(false);
  const double x[] = {1, 5, 9, 1}, y[] = {1, 8, 1, 1};
  const double farX[] = {-5, 5, 9}, farY[] = {5, 5, 30};
  g_allocations = 0;
  g_counting = true;
  int drawn = 0;
  for (const int fill : {0, 1}) {
    drawn += PolylineClip(&dc, x, y, 3, &kBox, fill, nullptr);
    drawn += PolylineClip(&dc, x, y, 4, &kBox, fill, nullptr);  // closed: the closing point is dropped
    drawn += PolylineClip(&dc, farX, farY, 3, &kBox, fill, nullptr);
  }
  g_counting = false;
  EXPECT_EQ(g_allocations, 0);
  EXPECT_EQ(drawn, 6);
  EXPECT_EQ(dc.PrimitiveCount(), 6u);
}

// Polygons longer than the points kept without the heap lose nothing.
TEST(PolylineClip, LongCutPolygonKeepsEveryPoint) {
  // A zigzag between y 2 and 4, closed along y 1, with a spike between (7.4, 2) and
  // (7.6, 2) cut off at the top edge.
  Coords x, y;
  for (int i = 0; i < 150; ++i) {
    x.push_back(i / 10.0);
    y.push_back(i == 75 ? 14 : i % 2 ? 4 : 2);
  }
  x.insert(x.end(), {14.9, 0});
  y.insert(y.end(), {1, 1});
  CRecordingDevice dc;
  EXPECT_EQ(Clip(dc, x, y, &kBox, 1), 1);
  ASSERT_EQ(dc.Primitives().size(), 1u);
  Coords gotX = dc.Primitives()[0].x, wantX = x, wantY = y;
  gotX.erase(gotX.begin() + 75, gotX.begin() + 77);  // the two crossings
  wantX.erase(wantX.begin() + 75);
  EXPECT_EQ(gotX, wantX);
  wantY[75] = 10;
  wantY.insert(wantY.begin() + 75, 10);
  EXPECT_EQ(dc.Primitives()[0].y, wantY);
}

TEST(GetClipBounds, TakesTheRectangleOrElseTheDeviceClipBox) {
  CRecordingDevice dc;
  dc.SetClipBox(RECT{-5, 40, 60, -7});
  RECT out{};
  const RECT clip{1, 2, 3, 4};
  const auto edges = [](const RECT& r) { return std::vector<LONG>{r.left, r.top, r.right, r.bottom}; };
  EXPECT_EQ(GetClipBounds(&out, &dc, &clip), &out);
  EXPECT_EQ(edges(out), edges(clip));
  GetClipBounds(&out, &dc, nullptr);
  EXPECT_EQ(edges(out), (std::vector<LONG>{-5, 40, 60, -7}));
  GetClipBounds(&out, nullptr, nullptr);
  EXPECT_EQ(edges(out), (std::vector<LONG>{INT32_MIN, INT32_MAX, INT32_MAX, INT32_MIN}));
  EXPECT_EQ(GetClipBounds(nullptr, &dc, &clip), nullptr);
}
