// Line drawing: a long random-walk polyline stroked with line types on a 2000 × 2000 image
// through the painter device, beside Qt's own dashed stroke of the same polyline, and on a
// recording device that records nothing (the dash walk alone). All report vertices per
// second and the allocations made by one draw.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numbers>
#include <vector>

#include "AllocationCounter.h"
#include "linestyle/LineType.h"
#include "linetable/LineTypeTable.h"
#include "platform/Gdi.h"
#include "platform/RecordingDevice.h"

#ifdef VANTREL1_BENCH_QT
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <QPolygonF>

#include "qt/QPainterDevice.h"
#endif

namespace {

constexpr int kSide = 2000;
constexpr long kVertices = 200000;
constexpr COLORREF kInk = RGB(0, 0, 0);
// Dash 30, gap 10 drawing units, in tenths.
constexpr const WCHAR* kDashedItem = u"0,0,1,0,0,300,0,0,0,0,0,0,0,0,0,100,0,0,0,0,0,0,0,0,0";
constexpr int kFence = 1037;    // "ograda"
constexpr int kRailway = 1041;  // "železnica"

struct Walk {
  std::vector<double> x;
  std::vector<double> y;
};

// Segments of 5 to 30 units in random directions from the middle of the image, reflected
// at its edges so that every vertex stays on it. A fixed xorshift generator keeps the walk
// the same on every machine.
Walk MakeWalk() {
  Walk walk;
  walk.x.reserve(kVertices);
  walk.y.reserve(kVertices);
  std::uint64_t state = 0x2545F4914F6CDD1Du;
  auto uniform = [&state] {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return static_cast<double>(state >> 11) * 0x1.0p-53;
  };
  auto reflect = [](double v) { return v < 0 ? -v : (v > kSide ? 2.0 * kSide - v : v); };
  double x = kSide / 2.0;
  double y = kSide / 2.0;
  for (long i = 0; i < kVertices; ++i) {
    walk.x.push_back(x);
    walk.y.push_back(y);
    const double length = 5.0 + 25.0 * uniform();
    const double angle = 2.0 * std::numbers::pi * uniform();
    x = reflect(x + length * std::cos(angle));
    y = reflect(y + length * std::sin(angle));
  }
  return walk;
}

const Walk& TheWalk() {
  static const Walk walk = MakeWalk();
  return walk;
}

RECT ImageClip() { return RECT{0, kSide, kSide, 0}; }

// One line type of one dashed line item drawn with its own one-pixel pen. Filled in place:
// a copy would not carry the colour.
void MakeDashedType(CLineType& type) {
  CLineItem item;
  if (type.Allocate(1, 0, 0) == 0 || item.FromAscii(kDashedItem) == 0 || type.AddLineItem(&item) == 0)
    std::abort();
  type.m_crColor = kInk;
}

CLineTypeTable& BuiltInTable() {
  static CLineTypeTable* table = [] {
    auto* t = new CLineTypeTable;
    t->FromFile(nullptr, nullptr, nullptr);
    return t;
  }();
  return *table;
}

// A line type of the table drawn as drawing code draws it: a coloured line from the cache,
// drawn, given back.
void DrawBuiltIn(HDC dc, int number, const Walk& walk) {
  CLineTypeTable& table = BuiltInTable();
  COLORREF colour = kInk;
  RECT clip = ImageClip();
  CLineType* line = table.CreateLine(number, &colour, 0, 1, 0);
  line->Draw(dc, dc, walk.x.data(), walk.y.data(), kVertices, &clip, 0);
  table.DeleteLine(line, 1);
}

void DrawDashed(HDC dc, CLineType& type, const Walk& walk) {
  RECT clip = ImageClip();
  type.Draw(dc, dc, walk.x.data(), walk.y.data(), kVertices, &clip, 0);
}

void Report(benchmark::State& state, std::uint64_t allocationsBefore) {
  const auto iterations = static_cast<double>(state.iterations());
  state.SetItemsProcessed(state.iterations() * kVertices);
  state.counters["allocs/draw"] =
      static_cast<double>(vantrel1::bench::AllocationCount() - allocationsBefore) / iterations;
}

// The dash walk alone ------------------------------------------------------------------

void BM_DrawWalkDashedItem(benchmark::State& state) {
  const Walk& walk = TheWalk();
  CLineType type;
  MakeDashedType(type);
  CRecordingDevice dc;
  dc.SetRecording(false);
  DrawDashed(&dc, type, walk);
  dc.Clear();
  const std::uint64_t before = vantrel1::bench::AllocationCount();
  for (auto _ : state) DrawDashed(&dc, type, walk);
  Report(state, before);
  state.counters["pieces/draw"] = static_cast<double>(dc.PrimitiveCount()) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_DrawWalkDashedItem)->Unit(benchmark::kMillisecond)->MinTime(0.3);

void BM_DrawWalkBuiltIn(benchmark::State& state) {
  const Walk& walk = TheWalk();
  const int number = static_cast<int>(state.range(0));
  CRecordingDevice dc;
  dc.SetRecording(false);
  DrawBuiltIn(&dc, number, walk);  // the cache holds the line from here on
  const std::uint64_t before = vantrel1::bench::AllocationCount();
  for (auto _ : state) DrawBuiltIn(&dc, number, walk);
  Report(state, before);
}
BENCHMARK(BM_DrawWalkBuiltIn)->Arg(kFence)->Arg(kRailway)->Unit(benchmark::kMillisecond)->MinTime(0.3);

#ifdef VANTREL1_BENCH_QT

// On an image ----------------------------------------------------------------------------

// Painting and fonts need a GUI application; the offscreen platform needs no display.
void EnsureGuiApp() {
  static QGuiApplication* app = [] {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    static int argc = 1;
    static char name[] = "vantrel1-bench";
    static char* argv[] = {name, nullptr};
    return new QGuiApplication(argc, argv);
  }();
  (void)app;
}

// White, at 254 dpi, so that 10 units per millimetre make one unit one pixel.
QImage MakeImage() {
  QImage image(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
  image.setDotsPerMeterX(10000);
  image.setDotsPerMeterY(10000);
  image.fill(Qt::white);
  return image;
}

const LogicalWindow kWindow{0.0, 0.0, double(kSide), double(kSide)};

// The device is made and ended in every iteration, so that anything it holds back is
// drawn within the measured time.
template <class DrawFn>
void DrawOnImage(benchmark::State& state, DrawFn&& draw) {
  EnsureGuiApp();
  QImage image = MakeImage();
  {
    auto device = QPainterDevice::ForImage(image, kWindow, 10.0);
    if (!device) {
      state.SkipWithError("no painter device");
      return;
    }
    draw(device.get());
  }
  const std::uint64_t before = vantrel1::bench::AllocationCount();
  for (auto _ : state) {
    auto device = QPainterDevice::ForImage(image, kWindow, 10.0);
    draw(device.get());
    device->End();
  }
  Report(state, before);
}

void BM_DrawImageDashedItem(benchmark::State& state) {
  const Walk& walk = TheWalk();
  CLineType type;
  MakeDashedType(type);
  DrawOnImage(state, [&](HDC dc) { DrawDashed(dc, type, walk); });
}
BENCHMARK(BM_DrawImageDashedItem)->Unit(benchmark::kMillisecond)->MinTime(0.5);

// The peer: the same polyline in device pixels (y downwards) stroked by Qt with a custom
// dash pattern of 30 on, 10 off, with antialiasing as the device draws.
void BM_DrawImageQtDashedPen(benchmark::State& state) {
  EnsureGuiApp();
  const Walk& walk = TheWalk();
  QPolygonF polygon;
  polygon.reserve(kVertices);
  for (long i = 0; i < kVertices; ++i) polygon << QPointF(walk.x[i], kSide - walk.y[i]);
  QPen pen(Qt::black, 1.0);
  pen.setDashPattern({30.0, 10.0});
  QImage image = MakeImage();
  const std::uint64_t before = vantrel1::bench::AllocationCount();
  for (auto _ : state) {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(pen);
    painter.drawPolyline(polygon);
    painter.end();
  }
  Report(state, before);
}
BENCHMARK(BM_DrawImageQtDashedPen)->Unit(benchmark::kMillisecond)->MinTime(0.5);

// The device's share: the dash pieces of the dashed item, walked once beforehand, handed to
// the device one by one as the walk hands them.
void BM_DrawImageDashPieces(benchmark::State& state) {
  const Walk& walk = TheWalk();
  CLineType type;
  MakeDashedType(type);
  CRecordingDevice recorder;
  DrawDashed(&recorder, type, walk);
  std::vector<double> pieces;
  for (const RecordedPrimitive& p : recorder.Primitives())
    pieces.insert(pieces.end(), {p.x[0], p.x[1], p.y[0], p.y[1]});
  DrawOnImage(state, [&](HDC dc) {
    const HPEN pen = CreatePen(PS_SOLID, 1, kInk);
    const HGDIOBJ old = SelectObject(dc, pen);
    for (std::size_t i = 0; i < pieces.size(); i += 4) PolylineD(dc, &pieces[i], &pieces[i + 2], 2);
    SelectObject(dc, old);
    DeleteObject(pen);
  });
}
BENCHMARK(BM_DrawImageDashPieces)->Unit(benchmark::kMillisecond)->MinTime(0.5);

void BM_DrawImageBuiltIn(benchmark::State& state) {
  const Walk& walk = TheWalk();
  const int number = static_cast<int>(state.range(0));
  DrawOnImage(state, [&](HDC dc) { DrawBuiltIn(dc, number, walk); });
}
BENCHMARK(BM_DrawImageBuiltIn)->Arg(kFence)->Arg(kRailway)->Unit(benchmark::kMillisecond)->MinTime(0.5);

#endif  // VANTREL1_BENCH_QT

}  // namespace
