// One-pixel antialiased lines written straight into image memory: exact coverage on the
// pixel grid, the same ink as Qt's own one-pixel lines, and nothing written outside the
// image whatever the coordinates.
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "PainterTestSupport.h"
#include "qt/HairlineRaster.h"

using vantrel1::HairlineRaster;

namespace {

constexpr QRgb kBlack = 0xFF000000u;
constexpr QRgb kWhite = 0xFFFFFFFFu;

QImage White(int w, int h, QImage::Format format = QImage::Format_RGB32) {
  QImage image(w, h, format);
  image.fill(Qt::white);
  return image;
}

// The grey that `coverage` (0–255) of black leaves on white.
QRgb Grey(int level) { return qRgb(level, level, level); }

// The darkness of all pixels together, in pixels of full ink.
double Ink(const QImage& image) {
  double ink = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) ink += (255 - qRed(image.pixel(x, y))) / 255.0;
  return ink;
}

// Each end reaches half a pixel beyond its point, as a round cap one pixel across does.
TEST(HairlineRaster, LineThroughPixelCentresCoversOneRowOrColumnAndHalfAPixelMore) {
  QImage image = White(12, 12);
  HairlineRaster raster(&image);
  ASSERT_TRUE(raster.Active());
  raster.Draw(QPointF(2, 5.5), QPointF(8, 5.5), kBlack);
  raster.Draw(QPointF(10.5, 9), QPointF(10.5, 1), qRgb(255, 0, 0));  // steep, drawn upwards
  for (int x = 0; x < 12; ++x)
    for (int y = 0; y < 12; ++y) {
      QRgb expected = kWhite;
      if (y == 5 && x >= 2 && x < 8) expected = kBlack;
      if (y == 5 && (x == 1 || x == 8)) expected = Grey(127);
      if (x == 10 && y >= 1 && y < 9) expected = qRgb(255, 0, 0);
      if (x == 10 && (y == 0 || y == 9)) expected = qRgb(255, 127, 127);
      EXPECT_EQ(image.pixel(x, y), expected) << x << "," << y;
    }
}

TEST(HairlineRaster, LineBetweenRowsSharesItsCoverageAndEndsCoverWhatTheySpan) {
  QImage image = White(12, 12);
  HairlineRaster raster(&image);
  // Centre on the boundary of rows 4 and 5: half of black on each (127 and 128 of 255),
  // and a quarter each in the half columns at the ends (64 of 255).
  raster.Draw(QPointF(1, 5), QPointF(4, 5), kBlack);
  // Ends a quarter into their columns reach a quarter into the next ones.
  raster.Draw(QPointF(2.25, 9.5), QPointF(7.75, 9.5), kBlack);
  for (int x = 1; x < 4; ++x) {
    EXPECT_EQ(image.pixel(x, 4), Grey(128)) << x;
    EXPECT_EQ(image.pixel(x, 5), Grey(127)) << x;
  }
  for (int x : {0, 4}) {
    EXPECT_EQ(image.pixel(x, 4), Grey(191)) << x;
    EXPECT_EQ(image.pixel(x, 5), Grey(191)) << x;
  }
  EXPECT_EQ(image.pixel(0, 9), kWhite);
  EXPECT_EQ(image.pixel(1, 9), Grey(191));
  for (int x = 2; x < 8; ++x) EXPECT_EQ(image.pixel(x, 9), kBlack) << x;
  EXPECT_EQ(image.pixel(8, 9), Grey(191));
  EXPECT_EQ(image.pixel(9, 9), kWhite);
}

TEST(HairlineRaster, PolylineCapsOnlyItsEndsSoPiecesMeetWithoutOverlap) {
  QImage straight = White(12, 12);
  QImage pieces = White(12, 12);
  HairlineRaster(&straight).Draw(QPointF(2, 5.5), QPointF(9, 5.5), kBlack);
  // The same run in three pieces, one of them reversed in length but not in direction,
  // moved into place by the offset.
  const QPointF run[] = {{1, 4.5}, {3.25, 4.5}, {6.5, 4.5}, {8, 4.5}};
  HairlineRaster(&pieces).DrawPolyline(run, 4, QPointF(1, 1), kBlack);
  for (int y = 0; y < 12; ++y)
    for (int x = 0; x < 12; ++x) EXPECT_EQ(pieces.pixel(x, y), straight.pixel(x, y)) << x << "," << y;
  EXPECT_EQ(straight.pixel(1, 5), Grey(127));
  EXPECT_EQ(straight.pixel(5, 5), kBlack);

  // A zigzag carries about the ink of Qt's polyline (a little more: at its sharp corners
  // both lines cover the corner's columns, as a round join would).
  vantrel1::test::EnsureGuiApp();
  const QPolygonF zigzag({{2.3, 2.5}, {8.7, 4.2}, {12.1, 9.6}, {17.5, 3.3}, {19.0, 3.0}});
  QImage ours = White(22, 12);
  QImage qt = White(22, 12);
  HairlineRaster(&ours).DrawPolyline(zigzag.constData(), zigzag.size(), QPointF(), kBlack);
  QPainter painter(&qt);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(zigzag);
  painter.end();
  EXPECT_NEAR(Ink(ours), Ink(qt), 0.1 * Ink(qt));
  HairlineRaster(&ours).DrawPolyline(nullptr, 3, QPointF(), kBlack);  // nothing to draw
}

TEST(HairlineRaster, DiagonalLinesCarryTheSameInkAsQtsOnePixelLines) {
  vantrel1::test::EnsureGuiApp();
  const QLineF lines[] = {{10.3, 20.7, 90.1, 55.2}, {15.0, 90.0, 40.0, 10.0}, {60.5, 60.5, 95.5, 95.5},
                          {5.2, 50.0, 95.7, 49.1}};
  for (const QLineF& line : lines) {
    QImage ours = White(100, 100);
    QImage qt = White(100, 100);
    HairlineRaster(&ours).Draw(line.p1(), line.p2(), kBlack);
    QPainter painter(&qt);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.0));
    painter.drawLine(line);
    painter.end();
    const double run = std::max(std::fabs(line.dx()), std::fabs(line.dy()));
    // One pixel of ink per column crossed and half a pixel's run more at each end, within
    // rounding of the coverages.
    const double cap = std::max(std::fabs(line.dx()), std::fabs(line.dy())) / line.length();
    EXPECT_NEAR(Ink(ours), run + cap, 0.01 * run) << line.x1() << "," << line.y1();
    EXPECT_NEAR(Ink(ours), Ink(qt), 0.12 * Ink(qt)) << line.x1() << "," << line.y1();
  }
}

TEST(HairlineRaster, WritesOnlyInsideTheImageWhateverTheCoordinates) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  QImage image = White(16, 16, QImage::Format_ARGB32_Premultiplied);
  HairlineRaster raster(&image);
  ASSERT_TRUE(raster.Active());
  const QLineF outside[] = {{-50, -50, -10, -1},  {20, 3, 40, 3},         {3, -0.7, 12, -1.6},
                            {-1e300, 1e300, 1e300, -1e300 + 1}, {kNaN, 2, 5, 5}, {1, 1, kInf, 2},
                            {0, 17.6, 16, 17.6}, {-1e9, -1e9, -1e9 + 3, 1e9}};
  for (const QLineF& line : outside) raster.Draw(line.p1(), line.p2(), kBlack);
  EXPECT_EQ(Ink(image), 0.0);
  // A line a billion pixels long that crosses the image fills its row, and only that.
  raster.Draw(QPointF(-1e9, 7.5), QPointF(1e9, 7.5), kBlack);
  // One along the border is drawn in the row inside; the half outside goes nowhere.
  raster.Draw(QPointF(0, 0), QPointF(16, 0), kBlack);
  for (int x = 0; x < 16; ++x) {
    EXPECT_EQ(image.pixel(x, 7), kBlack) << x;
    EXPECT_EQ(image.pixel(x, 0), Grey(127)) << x;
  }
  EXPECT_DOUBLE_EQ(Ink(image), 16.0 + 16.0 * 128 / 255.0);
}

// An image over a larger buffer whose guard words (before the first row, in every row's
// padding and after the last row) must survive any line.
TEST(HairlineRaster, RandomLinesNeverWriteOutsideTheImage) {
  constexpr std::uint32_t kGuard = 0xDEADBEEFu;
  std::uint64_t state = 0x9E3779B97F4A7C15u;
  auto next = [&state] {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return state;
  };
  const double scales[] = {1.0, 40.0, 1e6, 1e300};
  int inked = 0;
  for (int round = 0; round < 40; ++round) {
    const int w = 1 + static_cast<int>(next() % 37);
    const int h = 1 + static_cast<int>(next() % 29);
    const int pad = static_cast<int>(next() % 3);
    const int stride = w + pad;  // in words
    std::vector<std::uint32_t> buffer(static_cast<std::size_t>(stride * h + 2 * stride), kGuard);
    std::uint32_t* first = buffer.data() + stride;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) first[y * stride + x] = 0xFFFFFFFFu;
    QImage image(reinterpret_cast<uchar*>(first), w, h, stride * 4, QImage::Format_RGB32);
    HairlineRaster raster(&image);
    for (int i = 0; i < 500; ++i) {
      const double scale = scales[next() % 4];
      // From one image size before the image to two after it, or as far as the scale.
      auto coordinate = [&](int side) {
        const double unit = static_cast<double>(next() >> 11) * 0x1.0p-53;
        return (unit * 3.0 - 1.0) * (scale > 1.0 ? scale : side);
      };
      const QPointF a(coordinate(w), coordinate(h));
      const QPointF b(coordinate(w), coordinate(h));
      if (i % 7 == 0) {
        const QPointF points[] = {a, b, QPointF(coordinate(w), coordinate(h))};
        raster.DrawPolyline(points, 3, QPointF(0.5, -0.25), kBlack);
      } else {
        raster.Draw(a, b, kBlack);
      }
    }
    for (int x = 0; x < stride; ++x) {
      ASSERT_EQ(buffer[static_cast<std::size_t>(x)], kGuard) << round;
      ASSERT_EQ(buffer[static_cast<std::size_t>(stride * (h + 1) + x)], kGuard) << round;
    }
    for (int y = 0; y < h; ++y) {
      for (int x = w; x < stride; ++x) ASSERT_EQ(first[y * stride + x], kGuard) << round << " row " << y;
      for (int x = 0; x < w; ++x) inked += first[y * stride + x] != 0xFFFFFFFFu ? 1 : 0;
    }
  }
  EXPECT_GT(inked, 1000);  // the lines did reach the images
}

TEST(HairlineRaster, OnlyWordFormatsWithoutStraightAlphaAreDrawn) {
  EXPECT_TRUE(HairlineRaster::Supports(QImage::Format_RGB32));
  EXPECT_TRUE(HairlineRaster::Supports(QImage::Format_ARGB32_Premultiplied));
  for (QImage::Format f : {QImage::Format_ARGB32, QImage::Format_RGB888, QImage::Format_RGB16,
                           QImage::Format_Grayscale8, QImage::Format_RGBA8888_Premultiplied}) {
    QImage image = White(4, 4, f);
    HairlineRaster raster(&image);
    EXPECT_FALSE(raster.Active()) << f;
    raster.Draw(QPointF(0, 1.5), QPointF(4, 1.5), kBlack);
    EXPECT_EQ(image.pixel(1, 1), kWhite) << f;
  }
  QImage null;
  EXPECT_FALSE(HairlineRaster(&null).Active());
  EXPECT_FALSE(HairlineRaster(nullptr).Active());
}

}  // namespace
