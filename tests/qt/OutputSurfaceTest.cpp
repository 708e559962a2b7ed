// Drawings written to PNG, PDF and SVG files, and the page mapping behind them.
#include <cmath>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include "PainterTestSupport.h"
#include "qt/OutputSurface.h"

using namespace vantrel1::test;

namespace {

// A4 upright in the classic units: 2100 by 2970 tenths of a millimetre.
const LogicalWindow kA4{0, 0, 2100, 2970};

void DrawSample(HDC dc) {
  Selected pen(dc, CreatePen(PS_SOLID, 10, RGB(0, 0, 0)));
  MoveToEx(dc, 100, 1000, nullptr);
  LineTo(dc, 2000, 1000);
  LOGFONTW font = MakeFont(-50);
  Selected selected(dc, CreateFontIndirectW(&font));
  const char16_t text[] = u"Kanal Š-2";
  TextOutW(dc, 100, 1500, text, 9);
}

QByteArray ReadAll(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

TEST(PageMapping, PutsTheWindowsTopLeftAtTheOriginAtTheScaleOfPaper) {
  const PageMapping mapping(LogicalWindow{100, 200, 2200, 3170}, 10.0, 300.0);
  ASSERT_TRUE(mapping.IsValid());
  EXPECT_DOUBLE_EQ(mapping.DevicePerUnit(), 300.0 / 254.0);
  EXPECT_EQ(mapping.ToDevice(100, 3170), QPointF(0, 0));
  EXPECT_EQ(mapping.ToDevice(100 + 254, 3170 - 508), QPointF(300, 600));
  EXPECT_EQ(mapping.ToLogical(QPointF(300, 600)), QPointF(354, 2662));
  EXPECT_EQ(mapping.PaperSizeMm(), QSizeF(210, 297));
  EXPECT_EQ(mapping.DeviceSize(), QSize(2480, 3508));  // 2480.3 by 3507.9 rounded
  EXPECT_DOUBLE_EQ(mapping.DevicePerScreenPixel(), 3.125);

  const double nan = std::nan("");
  EXPECT_FALSE(PageMapping(LogicalWindow{0, 0, 100, 100}, 0.0, 300.0).IsValid());
  EXPECT_FALSE(PageMapping(LogicalWindow{0, 0, 100, 100}, 10.0, -1.0).IsValid());
  EXPECT_FALSE(PageMapping(LogicalWindow{0, 0, 100, 100}, nan, 300.0).IsValid());
  EXPECT_FALSE(PageMapping(LogicalWindow{0, 100, 100, 0}, 10.0, 300.0).IsValid());  // top below bottom
  EXPECT_FALSE(PageMapping(LogicalWindow{0, 0, nan, 100}, 10.0, 300.0).IsValid());
  EXPECT_FALSE(PageMapping(LogicalWindow{-1e308, 0, 1e308, 100}, 10.0, 300.0).IsValid());  // width overflows
  EXPECT_EQ(PageMapping(LogicalWindow{0, 0, 1e15, 100}, 10.0, 300.0).DeviceSize(), QSize());
}

TEST(OutputSurface, PngHoldsTheWindowAtItsResolutionOnWhite) {
  EnsureGuiApp();
  QTemporaryDir dir;
  const QString path = dir.filePath("sheet.PNG");
  auto surface = OutputSurface::Open(path, LogicalWindow{0, 0, 2100, 1480}, 100.0);
  ASSERT_NE(surface, nullptr);
  EXPECT_EQ(surface->GetFormat(), OutputSurface::Format::Png);
  EXPECT_EQ(surface->PixelSize(), QSize(827, 583));  // 826.8 by 582.7
  RECT clip{};
  EXPECT_EQ(GetClipBox(surface->Dc(), &clip), SIMPLEREGION);
  EXPECT_EQ(clip.right, 2101);  // the last whole pixel reaches past the window
  EXPECT_EQ(clip.bottom, -1);
  DrawSample(surface->Dc());
  EXPECT_TRUE(surface->Finish());
  EXPECT_TRUE(surface->Finish());

  QImage image(path, "PNG");
  ASSERT_FALSE(image.isNull());
  EXPECT_EQ(image.size(), QSize(827, 583));
  EXPECT_EQ(image.dotsPerMeterX(), 3937);
  EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
  // The line at y = 1000 units, 48 mm from the top: row 189 at 100 dpi.
  const int row = static_cast<int>((1480 - 1000) / 254.0 * 100.0);
  EXPECT_EQ(image.pixel(400, row), qRgb(0, 0, 0));
  EXPECT_EQ(image.pixel(400, row - 5), qRgb(255, 255, 255));
}

TEST(OutputSurface, PdfIsOnePageOfTheWindowsPaperSize) {
  EnsureGuiApp();
  QTemporaryDir dir;
  const QString path = dir.filePath("sheet.pdf");
  {
    auto surface = OutputSurface::Open(path, kA4, 600.0);
    ASSERT_NE(surface, nullptr);
    EXPECT_EQ(surface->PixelSize(), QSize(4961, 7016));
    DrawSample(surface->Dc());
    EXPECT_TRUE(surface->Finish());
  }
  const QByteArray pdf = ReadAll(path);
  EXPECT_TRUE(pdf.startsWith("%PDF-"));
  EXPECT_TRUE(pdf.contains("/MediaBox [0 0 595"));  // 210 mm is 595.3 points
  EXPECT_EQ(pdf.count("/Type /Page\n") + pdf.count("/Type /Page "), 1);
  EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF"));
}

TEST(OutputSurface, SvgIsAnXmlImageSizedInMillimetres) {
  EnsureGuiApp();
  QTemporaryDir dir;
  const QString path = dir.filePath("sheet.svg");
  {
    // Destroyed without Finish: the file is written all the same.
    auto surface = OutputSurface::Open(path, kA4, 254.0);
    ASSERT_NE(surface, nullptr);
    DrawSample(surface->Dc());
  }
  const QByteArray svg = ReadAll(path);
  QXmlStreamReader xml(svg);
  ASSERT_TRUE(xml.readNextStartElement());
  EXPECT_EQ(xml.name(), QLatin1String("svg"));
  EXPECT_EQ(xml.attributes().value("width"), QLatin1String("210mm"));
  EXPECT_EQ(xml.attributes().value("height"), QLatin1String("297mm"));
  EXPECT_EQ(xml.attributes().value("viewBox"), QLatin1String("0 0 2100 2970"));
  int lines = 0;
  int texts = 0;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    lines += xml.name() == QLatin1String("polyline") ? 1 : 0;
    if (xml.name() == QLatin1String("text")) {
      ++texts;
      EXPECT_EQ(xml.readElementText(), QString::fromUtf8("Kanal Š-2"));
    }
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_EQ(lines, 1);
  EXPECT_EQ(texts, 1);
}

TEST(OutputSurface, RefusesWhatItCannotWrite) {
  EnsureGuiApp();
  QTemporaryDir dir;
  EXPECT_FALSE(OutputSurface::FormatOf(dir.filePath("sheet.bmp")));
  EXPECT_FALSE(OutputSurface::FormatOf(dir.filePath("png")));
  EXPECT_EQ(OutputSurface::Open(dir.filePath("sheet.bmp"), kA4), nullptr);
  EXPECT_EQ(OutputSurface::Open(dir.filePath("sheet.png"), LogicalWindow{0, 0, 0, 10}), nullptr);
  EXPECT_EQ(OutputSurface::Open(dir.filePath("sheet.png"), kA4, 0.0), nullptr);
  EXPECT_EQ(OutputSurface::Open(dir.filePath("sheet.png"), kA4, std::nan("")), nullptr);
  // Two metres square at 600 dpi would be 47244 pixels a side.
  EXPECT_EQ(OutputSurface::Open(dir.filePath("sheet.png"), LogicalWindow{0, 0, 20000, 20000}, 600.0), nullptr);
  EXPECT_EQ(OutputSurface::Open(dir.filePath("missing/sheet.pdf"), kA4), nullptr);
  EXPECT_EQ(OutputSurface::Open(dir.filePath("missing/sheet.svg"), kA4), nullptr);
  auto png = OutputSurface::Open(dir.filePath("missing/sheet.png"), kA4, 50.0);
  ASSERT_NE(png, nullptr);
  EXPECT_FALSE(png->Finish());
  EXPECT_FALSE(QFile::exists(dir.filePath("missing/sheet.png")));
}
