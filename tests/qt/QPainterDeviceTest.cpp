// Lines, shapes, the clip box and painting onto a widget with the QPainter device.
#include <cmath>
#include <limits>
#include <numbers>

#include <QPainter>
#include <QWidget>
#include <gtest/gtest.h>

#include "PainterTestSupport.h"
#include "platform/RecordingDevice.h"

using namespace vantrel1::test;

namespace {

constexpr QRgb kBlack = 0xFF000000u;
constexpr QRgb kWhite = 0xFFFFFFFFu;

int DarkRowsInColumn(const QImage& image, int x) {
  int rows = 0;
  for (int y = 0; y < image.height(); ++y) rows += IsDark(image.pixel(x, y)) ? 1 : 0;
  return rows;
}

void Line(HDC dc, double x0, double y0, double x1, double y1) {
  const double x[] = {x0, x1};
  const double y[] = {y0, y1};
  PolylineD(dc, x, y, 2);
}

}  // namespace

TEST(QPainterDeviceLines, WidePenCoversItsWidthWithRoundCapsAndNothingElse) {
  Canvas canvas(1000, 1000);
  {
    Selected pen(canvas.dc(), CreatePen(PS_SOLID, 10, RGB(0, 0, 0)));
    MoveToEx(canvas.dc(), 100, 500, nullptr);
    LineTo(canvas.dc(), 900, 500);
  }
  const QImage& image = canvas.Done();
  for (int row = 495; row <= 504; ++row) EXPECT_EQ(image.pixel(500, row), kBlack) << row;
  EXPECT_EQ(image.pixel(500, 493), kWhite);
  EXPECT_EQ(image.pixel(500, 506), kWhite);
  // The round cap reaches half the width past each end point.
  EXPECT_EQ(image.pixel(96, 500), kBlack);
  EXPECT_EQ(image.pixel(903, 499), kBlack);
  EXPECT_EQ(image.pixel(93, 500), kWhite);
  EXPECT_EQ(image.pixel(906, 500), kWhite);
  EXPECT_EQ(InkBox(image), QRect(QPoint(95, 495), QPoint(904, 504)));
}

TEST(QPainterDeviceLines, WidthIsInLogicalUnitsAndWidthZeroIsOneDevicePixel) {
  // 2540 dpi: ten pixels per logical unit.
  Canvas canvas(400, 400, PageMapping(LogicalWindow{0, 0, 40, 40}, 10.0, 2540.0));
  {
    Selected pen(canvas.dc(), CreatePen(PS_SOLID, 0, RGB(0, 0, 0)));
    Line(canvas.dc(), 5, 30.05, 35, 30.05);  // through the middle of pixel row 99
  }
  {
    Selected pen(canvas.dc(), CreatePen(PS_SOLID, 2, RGB(0, 0, 0)));
    Line(canvas.dc(), 20, 10, 20, 38);  // column 200, twenty pixels wide
  }
  const QImage& image = canvas.Done();
  EXPECT_EQ(DarkRowsInColumn(image, 100), 1);
  EXPECT_EQ(image.pixel(100, 99), kBlack);
  int darkColumns = 0;
  for (int x = 150; x < 250; ++x) darkColumns += IsDark(image.pixel(x, 250)) ? 1 : 0;
  EXPECT_EQ(darkColumns, 20);
}

// One-pixel lines are written straight into RGB32 and premultiplied ARGB32 images and
// handed to Qt on any other; a drawing must look the same either way.
TEST(QPainterDeviceLines, OnePixelLinesLookAlikeWhetherWrittenDirectlyOrByQt) {
  EnsureGuiApp();
  auto spokes = [](HDC dc) {
    Selected pen(dc, CreatePen(PS_SOLID, 1, RGB(0, 0, 160)));
    for (int i = 0; i < 60; ++i) {
      const double a = i * 0.37;
      Line(dc, 150 + 20 * std::cos(a), 100 + 20 * std::sin(a), 150 + 95 * std::cos(a), 100 + 95 * std::sin(a));
    }
  };
  // A borrowed painter never holds lines: the reference is drawn by Qt.
  QImage byQt(300, 200, QImage::Format_RGB32);
  byQt.fill(Qt::white);
  {
    QPainter painter(&byQt);
    QPainterDevice device(painter, PageMapping(LogicalWindow{0, 0, 300, 200}, 10.0, 254.0));
    spokes(&device);
  }
  double qtInk = 0;
  for (int y = 0; y < 200; ++y)
    for (int x = 0; x < 300; ++x) qtInk += 255 - qRed(byQt.pixel(x, y));
  for (QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied, QImage::Format_ARGB32}) {
    QImage image(300, 200, format);
    image.fill(Qt::white);
    image.setDotsPerMeterX(10000);  // 254 dpi: one unit, one pixel
    image.setDotsPerMeterY(10000);
    {
      auto device = QPainterDevice::ForImage(image, LogicalWindow{0, 0, 300, 200}, 10.0);
      ASSERT_NE(device, nullptr);
      spokes(device.get());
    }
    const QImage drawn = image.convertToFormat(QImage::Format_RGB32);
    double ink = 0;
    for (int y = 0; y < 200; ++y)
      for (int x = 0; x < 300; ++x) {
        ink += 255 - qRed(drawn.pixel(x, y));
        // In the pen's colour, and where Qt put most of a pixel's worth, so does the device
        // there or next to it (the two place the half pixel of a cap a little apart).
        EXPECT_NEAR(qBlue(drawn.pixel(x, y)), 160 + 95 * qRed(drawn.pixel(x, y)) / 255.0, 3.0) << format;
        if (qRed(byQt.pixel(x, y)) < 64) {
          int darkest = 255;
          for (int v = std::max(0, y - 1); v <= std::min(199, y + 1); ++v)
            for (int u = std::max(0, x - 1); u <= std::min(299, x + 1); ++u)
              darkest = std::min(darkest, qRed(drawn.pixel(u, v)));
          EXPECT_LT(darkest, 96) << format << " at " << x << "," << y;
        }
      }
    EXPECT_NEAR(ink, qtInk, 0.1 * qtInk) << format;
  }
}

TEST(QPainterDeviceLines, StyledPensKeepScreenPixelPatternsUpToWidthOne) {
  // 96 dpi and 96 / 25.4 units per millimetre: one logical unit is one screen pixel.
  Canvas canvas(400, 100, PageMapping(LogicalWindow{0, 0, 400, 100}, 96.0 / 25.4, 96.0));
  const struct {
    int style;
    int width;
    double y;  // through the middle of a pixel row
  } lines[] = {{PS_DASH, 1, 90.5}, {PS_DOT, 0, 70.5}, {PS_DASHDOTDOT, 1, 50.5}, {PS_DASH, 2, 30.5}};
  for (const auto& l : lines) {
    Selected pen(canvas.dc(), CreatePen(l.style, l.width, RGB(0, 0, 0)));
    Line(canvas.dc(), 100, l.y, 390, l.y);
  }
  const QImage& image = canvas.Done();
  const auto dark = [&image](int offset, int row) { return IsDark(image.pixel(100 + offset, row)); };
  // Dash: 18 on, 6 off.
  EXPECT_TRUE(dark(9, 9));
  EXPECT_FALSE(dark(21, 9));
  EXPECT_TRUE(dark(33, 9));
  EXPECT_FALSE(dark(45, 9));
  EXPECT_TRUE(dark(48 + 17, 9));
  // Dot: 3 on, 3 off.
  EXPECT_TRUE(dark(1, 29));
  EXPECT_FALSE(dark(4, 29));
  EXPECT_TRUE(dark(7, 29));
  // Dash, dot, dot: 9 on, 3 off, 3 on, 3 off, 3 on, 3 off.
  const bool expected[] = {true, false, true, false, true, false};
  const int probes[] = {4, 10, 13, 16, 19, 22};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(dark(24 + probes[i], 49), expected[i]) << probes[i];
  // A wider dashed pen is solid.
  for (int offset = 0; offset < 280; offset += 3) EXPECT_TRUE(dark(offset, 69)) << offset;
}

TEST(QPainterDeviceShapes, BrushFillsInsideAndNullPenLeavesNoOutline) {
  Canvas canvas(600, 600);
  {
    Selected brush(canvas.dc(), CreateSolidBrush(RGB(200, 30, 10)));
    Selected pen(canvas.dc(), CreatePen(PS_NULL, 5, RGB(0, 0, 0)));
    const POINT triangle[] = {{100, 100}, {500, 100}, {300, 400}};
    Polygon(canvas.dc(), triangle, 3);
  }
  const QImage& image = canvas.Done();
  EXPECT_EQ(image.pixel(300, 400), qRgb(200, 30, 10));  // logical (300, 200)
  EXPECT_EQ(image.pixel(300, 498), qRgb(200, 30, 10));  // just above the base at y = 100
  EXPECT_EQ(image.pixel(300, 501), kWhite);
  // The fill ends at the edges: no dark outline anywhere.
  EXPECT_FALSE(InkBox(image, IsDark).isValid());
  EXPECT_EQ(InkBox(image), QRect(QPoint(100, 200), QPoint(499, 499)));
}

TEST(QPainterDeviceShapes, PolygonsFillByTheAlternateRule) {
  Canvas canvas(400, 400);
  {
    Selected brush(canvas.dc(), CreateSolidBrush(RGB(0, 0, 255)));
    SelectObject(canvas.dc(), GetStockObject(NULL_PEN));
    // A pentagram: its centre is wound twice and stays empty.
    POINT star[5];
    for (int i = 0; i < 5; ++i) {
      const double a = std::numbers::pi / 2 + i * 4 * std::numbers::pi / 5;
      star[i] = POINT{static_cast<LONG>(200 + 150 * std::cos(a)), static_cast<LONG>(200 + 150 * std::sin(a))};
    }
    Polygon(canvas.dc(), star, 5);
  }
  const QImage& image = canvas.Done();
  EXPECT_EQ(image.pixel(200, 200), kWhite);
  EXPECT_EQ(image.pixel(200, 80), qRgb(0, 0, 255));  // inside the top point
}

TEST(QPainterDeviceShapes, RectanglesAndEllipsesFillTheBoxAndInsideFrameStaysWithinIt) {
  Canvas canvas(1000, 500);
  SelectObject(canvas.dc(), GetStockObject(NULL_BRUSH));
  {
    Selected pen(canvas.dc(), CreatePen(PS_SOLID, 20, RGB(0, 0, 0)));
    Rectangle(canvas.dc(), 100, 400, 300, 100);
  }
  {
    Selected pen(canvas.dc(), CreatePen(PS_INSIDEFRAME, 20, RGB(0, 0, 0)));
    Rectangle(canvas.dc(), 400, 400, 600, 100);
  }
  {
    Selected brush(canvas.dc(), CreateSolidBrush(RGB(0, 160, 0)));
    Selected pen(canvas.dc(), CreatePen(PS_SOLID, 0, RGB(0, 0, 0)));
    Ellipse(canvas.dc(), 700, 400, 900, 100);
  }
  const QImage& image = canvas.Done();
  // A plain pen is centred on the box's edge, an inside-frame pen lies within it.
  EXPECT_EQ(image.pixel(95, 250), kBlack);
  EXPECT_EQ(image.pixel(104, 250), kBlack);
  EXPECT_EQ(image.pixel(200, 250), kWhite);  // null brush
  EXPECT_EQ(image.pixel(395, 250), kWhite);
  EXPECT_EQ(image.pixel(401, 250), kBlack);
  EXPECT_EQ(image.pixel(418, 250), kBlack);
  EXPECT_EQ(image.pixel(421, 250), kWhite);
  // The ellipse fills its box's centre, not its corners.
  EXPECT_EQ(image.pixel(800, 250), qRgb(0, 160, 0));
  EXPECT_EQ(image.pixel(710, 110), kWhite);
  EXPECT_EQ(InkBox(image.copy(650, 0, 350, 500)), QRect(QPoint(49, 99), QPoint(250, 400)));
}

TEST(QPainterDeviceClipBox, IsTheVisiblePageInLogicalUnits) {
  Canvas whole(2000, 1000, PageMapping(LogicalWindow{1000, 2000, 3000, 3000}, 10.0, 254.0));
  RECT box{};
  EXPECT_EQ(GetClipBox(whole.dc(), &box), SIMPLEREGION);
  EXPECT_EQ(box.left, 1000);
  EXPECT_EQ(box.top, 3000);
  EXPECT_EQ(box.right, 3000);
  EXPECT_EQ(box.bottom, 2000);

  // Half a pixel per unit: the image shows twice the window's size beyond its corner.
  Canvas half(1000, 500, PageMapping(LogicalWindow{-500, -250, 100, 750}, 10.0, 127.0));
  EXPECT_EQ(GetClipBox(half.dc(), &box), SIMPLEREGION);
  EXPECT_EQ(box.left, -500);
  EXPECT_EQ(box.top, 750);
  EXPECT_EQ(box.right, 1500);
  EXPECT_EQ(box.bottom, -250);

  {
    Selected pen(whole.dc(), CreatePen(PS_SOLID, 4, RGB(0, 0, 0)));
    MoveToEx(whole.dc(), 1500, 2500, nullptr);
    LineTo(whole.dc(), 2500, 2500);
  }
  EXPECT_EQ(InkBox(whole.Done()), QRect(QPoint(498, 498), QPoint(1501, 501)));
}

TEST(QPainterDeviceRobustness, FarAwayAndNonFiniteCoordinatesDrawOnlyWhatIsVisible) {
  Canvas canvas(1000, 1000);
  {
    // A pen two billion units wide is held to a few page diagonals; the ellipse's outline
    // lies far off the page and its fill covers all of it.
    Selected brush(canvas.dc(), CreateSolidBrush(RGB(0, 0, 255)));
    Selected pen(canvas.dc(), CreatePen(PS_SOLID, 2000000000, RGB(0, 0, 0)));
    Ellipse(canvas.dc(), -2000000000, 2000000000, 2000000000, -2000000000);
  }
  {
    // Unclipped, four billion units of dashes would never finish.
    Selected pen(canvas.dc(), CreatePen(PS_DASH, 0, RGB(0, 0, 0)));
    Line(canvas.dc(), -2e9, 700.5, 2e9, 700.5);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double x[] = {0, nan, 1000};
    const double y[] = {600.5, nan, 600.5};
    PolylineD(canvas.dc(), x, y, 3);
    const double inf = std::numeric_limits<double>::infinity();
    const double px[] = {0, inf, 1000};
    const double py[] = {100, 500, 100};
    PolygonD(canvas.dc(), px, py, 3);
  }
  LOGFONTW huge = MakeFont(-2147483647 - 1);
  {
    Selected font(canvas.dc(), CreateFontIndirectW(&huge));
    EXPECT_TRUE(Text(canvas.dc(), 500, 500, u"Km"));
    SIZE size{};
    EXPECT_TRUE(GetTextExtentPoint32W(canvas.dc(), u"Km", 2, &size));
    EXPECT_EQ(size.cx, 2147483647);
    EXPECT_EQ(size.cy, 2147483647);
  }
  const QImage& image = canvas.Done();
  EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 255));
  EXPECT_EQ(image.pixel(999, 999), qRgb(0, 0, 255));
  int dashes = 0;
  for (int x = 0; x < 1000; ++x) dashes += image.pixel(x, 299) == kBlack ? 1 : 0;
  EXPECT_GT(dashes, 600);
  EXPECT_LT(dashes, 850);
  const QRect dark = InkBox(image, IsDark);
  EXPECT_EQ(dark.top(), 299);
  EXPECT_EQ(dark.bottom(), 299);
}

TEST(QPainterDeviceRobustness, EndedDeviceDrawsNothingAndKeepsMeasuring) {
  Canvas canvas(100, 100);
  canvas.Done();
  EXPECT_FALSE(canvas.device->IsActive());
  Selected brush(canvas.dc(), CreateSolidBrush(RGB(0, 0, 0)));
  Rectangle(canvas.dc(), 0, 100, 100, 0);
  EXPECT_EQ(canvas.image.pixel(50, 50), kWhite);
  TEXTMETRICW tm{};
  EXPECT_TRUE(GetTextMetricsW(canvas.dc(), &tm));
  EXPECT_GT(tm.tmHeight, 0);
  EXPECT_EQ(QPainterDevice::ForImage(canvas.image, LogicalWindow{0, 0, 0, 100}), nullptr);
  QImage null;
  EXPECT_EQ(QPainterDevice::ForImage(null, LogicalWindow{0, 0, 100, 100}), nullptr);
}

namespace {

LOGFONTW SceneFont() { return MakeFont(-40); }

// A little of everything a line type draws, in distinct colours.
void DrawScene(HDC dc) {
  {
    Selected pen(dc, CreatePen(PS_SOLID, 6, RGB(255, 0, 0)));
    const POINT road[] = {{50, 50}, {400, 120}, {700, 80}};
    Polyline(dc, road, 3);
  }
  {
    Selected brush(dc, CreateSolidBrush(RGB(0, 128, 0)));
    Selected pen(dc, CreatePen(PS_NULL, 0, 0));
    const POINT arrow[] = {{500, 300}, {600, 340}, {500, 380}};
    Polygon(dc, arrow, 3);
    Rectangle(dc, 100, 450, 250, 300);
    Ellipse(dc, 700, 500, 900, 300);
  }
  const LOGFONTW font = SceneFont();
  Selected selected(dc, CreateFontIndirectW(&font));
  SetTextColor(dc, RGB(0, 0, 255));
  SetBkMode(dc, TRANSPARENT);
  Text(dc, 300, 250, u"Km 12+500");
}

bool Bluish(QRgb c) { return qBlue(c) > qRed(c) + 40 && qBlue(c) > qGreen(c) + 40; }

}  // namespace

TEST(QPainterDeviceAgreesWithRecording, PrimitivesLandWhereTheRecordingDevicePutsThem) {
  CRecordingDevice recording;
  DrawScene(&recording);
  Canvas canvas(1000, 600);
  DrawScene(canvas.dc());
  SIZE extent{};
  {
    const LOGFONTW font = SceneFont();
    Selected selected(canvas.dc(), CreateFontIndirectW(&font));
    GetTextExtentPoint32W(canvas.dc(), u"Km 12+500", 9, &extent);
  }
  const QImage& image = canvas.Done();
  const auto at = [&image](double x, double y) { return image.pixel(int(x), int(600 - y)); };

  ASSERT_EQ(recording.PrimitiveCount(), 5u) << recording.ToString();
  for (const RecordedPrimitive& p : recording.Primitives()) {
    const std::string what = DescribePrimitive(p);
    switch (p.kind) {
      case PrimitiveKind::Polyline:
        for (std::size_t i = 0; i < p.x.size(); ++i) EXPECT_EQ(at(p.x[i], p.y[i]), qRgb(255, 0, 0)) << what;
        EXPECT_EQ(at((p.x[0] + p.x[1]) / 2, (p.y[0] + p.y[1]) / 2), qRgb(255, 0, 0)) << what;
        break;
      case PrimitiveKind::Polygon:
        EXPECT_EQ(at((p.x[0] + p.x[1] + p.x[2]) / 3, (p.y[0] + p.y[1] + p.y[2]) / 3), qRgb(0, 128, 0)) << what;
        break;
      case PrimitiveKind::Rectangle:
      case PrimitiveKind::Ellipse:
        EXPECT_EQ(at((p.x[0] + p.x[1]) / 2, (p.y[0] + p.y[1]) / 2), qRgb(0, 128, 0)) << what;
        break;
      case PrimitiveKind::Text: {
        // Left/top alignment: the text's cell hangs below and right of its point.
        const QRect ink = InkBox(image, Bluish);
        const QRect cell(int(p.x[0]), int(600 - p.y[0]), extent.cx, extent.cy);
        EXPECT_TRUE(cell.adjusted(-1, -1, 1, 1).contains(ink)) << what;
        EXPECT_GT(ink.width(), extent.cx * 9 / 10) << what;
        break;
      }
    }
  }
}

namespace {

class DrawingWidget : public QWidget {
 public:
  RECT clip{};
  bool penRestored = false;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QPen before = painter.pen();
    {
      QPainterDevice dc(painter, PageMapping(LogicalWindow{0, 0, 200, 100}, 10.0, 254.0));
      GetClipBox(&dc, &clip);
      Selected brush(&dc, CreateSolidBrush(RGB(255, 0, 255)));
      Rectangle(&dc, 20, 80, 60, 20);
    }
    penRestored = painter.pen() == before;
  }
};

}  // namespace

TEST(QPainterDeviceOnWidget, DrawsThroughTheWidgetsPainterAndRestoresIt) {
  EnsureGuiApp();
  DrawingWidget widget;
  widget.resize(200, 100);
  const QImage image = widget.grab().toImage();
  EXPECT_TRUE(widget.penRestored);
  EXPECT_EQ(widget.clip.left, 0);
  EXPECT_EQ(widget.clip.top, 100);
  EXPECT_EQ(widget.clip.right, 200);
  EXPECT_EQ(widget.clip.bottom, 0);
  EXPECT_EQ(image.pixel(40, 50), qRgb(255, 0, 255));
  EXPECT_NE(image.pixel(100, 50), qRgb(255, 0, 255));
}
