// Text on the QPainter device: placement, rotation, background and measures.
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "PainterTestSupport.h"
#include "platform/Utf.h"

using namespace vantrel1::test;

namespace {

bool Greenish(QRgb c) { return qGreen(c) > qRed(c) + 20 && qGreen(c) > qBlue(c) + 20; }

QPoint Centre(const QRect& r) { return QPoint((r.left() + r.right() + 1) / 2, (r.top() + r.bottom() + 1) / 2); }

TEXTMETRICW Metrics(HDC dc) {
  TEXTMETRICW tm{};
  EXPECT_TRUE(GetTextMetricsW(dc, &tm));
  return tm;
}

SIZE Extent(HDC dc, std::u16string_view text) {
  SIZE size{};
  EXPECT_TRUE(GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size));
  return size;
}

// The measuring context used by the tests that need no drawing.
struct Measurer {
  Canvas canvas{10, 10};
  TEXTMETRICW Tm(const LOGFONTW& font) {
    Selected selected(canvas.dc(), CreateFontIndirectW(&font));
    return Metrics(canvas.dc());
  }
  SIZE Size(const LOGFONTW& font, std::u16string_view text) {
    Selected selected(canvas.dc(), CreateFontIndirectW(&font));
    return Extent(canvas.dc(), text);
  }
};

}  // namespace

TEST(QPainterDeviceText, IsUprightAndNotMirroredWithYGrowingUpwards) {
  Canvas canvas(600, 600);
  LOGFONTW font = MakeFont(-200);
  {
    Selected selected(canvas.dc(), CreateFontIndirectW(&font));
    SetTextAlign(canvas.dc(), TA_LEFT | TA_BASELINE);
    Text(canvas.dc(), 200, 200, u"L");
  }
  const QImage& image = canvas.Done();
  const QRect ink = InkBox(image, IsDark);
  ASSERT_TRUE(ink.isValid());
  // Standing on the baseline (device row 400), rising above it, starting right of x = 200.
  EXPECT_NEAR(ink.bottom(), 399, 1);
  EXPECT_GT(ink.height(), 130);
  EXPECT_GE(ink.left(), 200);
  // The stem is on the left and the foot at the bottom.
  EXPECT_TRUE(IsDark(image.pixel(ink.left() + 5, Centre(ink).y())));
  EXPECT_FALSE(IsDark(image.pixel(ink.right() - 3, Centre(ink).y())));
  EXPECT_TRUE(IsDark(image.pixel(ink.right() - 3, ink.bottom() - 3)));
  EXPECT_FALSE(IsDark(image.pixel(ink.right() - 3, ink.top() + 3)));
}

TEST(QPainterDeviceText, EscapementTurnsCounterClockwiseOnThePage) {
  Canvas canvas(600, 600);
  LOGFONTW font = MakeFont(-200, 900);
  {
    Selected selected(canvas.dc(), CreateFontIndirectW(&font));
    SetTextAlign(canvas.dc(), TA_LEFT | TA_BASELINE);
    Text(canvas.dc(), 400, 200, u"L");
  }
  const QImage& image = canvas.Done();
  const QRect ink = InkBox(image, IsDark);
  ASSERT_TRUE(ink.isValid());
  // The baseline runs up the page from (400, 200) and the letter stands to its left.
  EXPECT_NEAR(ink.right(), 399, 1);
  EXPECT_GT(ink.width(), 130);
  EXPECT_LE(ink.bottom(), 400);
  // Turned a quarter left, the stem lies along the bottom and the foot up the right side.
  EXPECT_TRUE(IsDark(image.pixel(Centre(ink).x(), ink.bottom() - 5)));
  EXPECT_TRUE(IsDark(image.pixel(ink.right() - 3, ink.top() + 3)));
  EXPECT_FALSE(IsDark(image.pixel(ink.left() + 3, ink.top() + 3)));
}

TEST(QPainterDeviceText, CentredTextStaysOnItsPointAtEveryEscapement) {
  const int escapements[] = {0, 450, 900, 1800, 2700, 3150};
  for (const int escapement : escapements) {
    Canvas canvas(600, 600);
    LOGFONTW font = MakeFont(-60, escapement);
    {
      Selected selected(canvas.dc(), CreateFontIndirectW(&font));
      SetTextAlign(canvas.dc(), TA_CENTER | TA_BASELINE);
      // The caller's vertical centring: move the point down the text by the distance from
      // the baseline to the middle of the cell.
      const TEXTMETRICW tm = Metrics(canvas.dc());
      const double d = tm.tmHeight * 0.5 - tm.tmDescent;
      const double a = escapement * 0.1 * std::numbers::pi / 180.0;
      Text(canvas.dc(), 300 + int(d * std::sin(a)), 300 - int(d * std::cos(a)), u"HHHHH");
    }
    const QRect ink = InkBox(canvas.Done(), IsDark);
    ASSERT_TRUE(ink.isValid()) << escapement;
    const QPoint centre = Centre(ink);
    EXPECT_NEAR(centre.x(), 300, 4) << escapement;
    EXPECT_NEAR(centre.y(), 300, 4) << escapement;
    if (escapement == 900 || escapement == 2700) {
      EXPECT_GT(ink.height(), 3 * ink.width()) << escapement;
    }
    if (escapement == 0 || escapement == 1800) {
      EXPECT_GT(ink.width(), 3 * ink.height()) << escapement;
    }
  }
}

TEST(QPainterDeviceText, AlignmentPlacesTheMeasuredCellAroundTheReferencePoint) {
  const struct {
    UINT align;
    int left;    // of the cell, in multiples of the advance: 0, -1/2 or -1
    int bottom;  // 0: cell bottom at the point, 1: baseline at the point, 2: top at the point
  } cases[] = {{TA_LEFT | TA_TOP, 0, 2},
               {TA_CENTER | TA_BASELINE, -1, 1},
               {TA_RIGHT | TA_BOTTOM, -2, 0},
               // a vertical-centre request left in by the caller is not an alignment flag
               {TA_CENTER | TA_BASELINE | 32, -1, 1}};
  for (const auto& c : cases) {
    // Two pixels per unit: the cell must scale with the mapping too.
    Canvas canvas(1000, 1000, PageMapping(LogicalWindow{0, 0, 500, 500}, 10.0, 508.0));
    LOGFONTW font = MakeFont(-50);
    Selected selected(canvas.dc(), CreateFontIndirectW(&font));
    SetBkMode(canvas.dc(), OPAQUE);
    SetBkColor(canvas.dc(), RGB(0, 200, 0));
    SetTextAlign(canvas.dc(), c.align);
    Text(canvas.dc(), 250, 250, u"   ");
    const SIZE size = Extent(canvas.dc(), u"   ");
    const TEXTMETRICW tm = Metrics(canvas.dc());
    const double left = 250 + c.left * size.cx / 2.0;
    const double bottom = 250 - (c.bottom == 2 ? tm.tmHeight : c.bottom == 1 ? tm.tmDescent : 0);
    const QRect cell = InkBox(canvas.Done(), Greenish);
    ASSERT_TRUE(cell.isValid()) << c.align;
    EXPECT_NEAR(cell.left(), 2 * left, 1) << c.align;
    EXPECT_NEAR(cell.right() + 1, 2 * (left + size.cx), 1) << c.align;
    EXPECT_NEAR(cell.bottom() + 1, 1000 - 2 * bottom, 1) << c.align;
    EXPECT_NEAR(cell.top(), 1000 - 2 * (bottom + tm.tmHeight), 1) << c.align;
  }
}

TEST(QPainterDeviceText, OpaqueCellTurnsWithTheTextAndTransparentModeLeavesNone) {
  Canvas canvas(600, 600);
  LOGFONTW font = MakeFont(-50, 900);
  Selected selected(canvas.dc(), CreateFontIndirectW(&font));
  SetBkColor(canvas.dc(), RGB(0, 200, 0));
  SetBkMode(canvas.dc(), TRANSPARENT);
  Text(canvas.dc(), 100, 100, u"Km 1");
  SetBkMode(canvas.dc(), OPAQUE);
  SetTextAlign(canvas.dc(), TA_LEFT | TA_TOP);
  Text(canvas.dc(), 400, 300, u"Km 1");
  const SIZE size = Extent(canvas.dc(), u"Km 1");
  const QRect cell = InkBox(canvas.Done(), Greenish);
  // Turned a quarter left, the top-left corner of the cell is at the point: the cell runs
  // up the page by the advance and to the right by the height.
  EXPECT_NEAR(cell.left(), 400, 1);
  EXPECT_NEAR(cell.bottom() + 1, 300, 1);
  EXPECT_NEAR(cell.height(), size.cx, 1);
  EXPECT_NEAR(cell.width(), size.cy, 1);
}

TEST(QPainterDeviceText, MetricsComeFromTheRealFontInLogicalUnits) {
  Measurer m;
  // DejaVu Sans: ascent 1901 and descent 483 of 2048 units to the em.
  const TEXTMETRICW em100 = m.Tm(MakeFont(-100));
  EXPECT_EQ(em100.tmAscent, 93);
  EXPECT_EQ(em100.tmDescent, 23);
  EXPECT_EQ(em100.tmHeight, 116);
  EXPECT_EQ(em100.tmInternalLeading, 16);
  EXPECT_EQ(em100.tmWeight, FW_NORMAL);

  // A positive height is the whole cell.
  const TEXTMETRICW cell100 = m.Tm(MakeFont(100));
  EXPECT_EQ(cell100.tmHeight, 100);
  EXPECT_EQ(cell100.tmAscent, 80);
  EXPECT_EQ(cell100.tmHeight - cell100.tmInternalLeading, 86);

  // Twice the height, twice every measure.
  const TEXTMETRICW em200 = m.Tm(MakeFont(-200));
  EXPECT_NEAR(em200.tmAscent, 2 * em100.tmAscent, 1);
  EXPECT_NEAR(em200.tmAveCharWidth, 2 * em100.tmAveCharWidth, 1);
  const SIZE text100 = m.Size(MakeFont(-100), u"Stacionaža");
  const SIZE text200 = m.Size(MakeFont(-200), u"Stacionaža");
  EXPECT_NEAR(text200.cx, 2 * text100.cx, 1);
  EXPECT_EQ(text100.cy, 116);
  EXPECT_EQ(text200.cy, 233);
  EXPECT_GT(text100.cx, 400);
  EXPECT_LT(text100.cx, 600);

  // The escapement turns the text, not its measures.
  EXPECT_EQ(m.Size(MakeFont(-100, 450), u"Stacionaža").cx, text100.cx);
}

TEST(QPainterDeviceText, WeightWidthAndDefaultHeightShapeTheMeasures) {
  Measurer m;
  LOGFONTW bold = MakeFont(-100);
  bold.lfWeight = FW_BOLD;
  const SIZE normal = m.Size(MakeFont(-100), u"Stacionaža");
  EXPECT_GT(m.Size(bold, u"Stacionaža").cx, normal.cx * 11 / 10);
  EXPECT_EQ(m.Tm(bold).tmWeight, FW_BOLD);

  // A width request stretches the glyphs to that average character width.
  LOGFONTW wide = MakeFont(-100);
  wide.lfWidth = 2 * m.Tm(MakeFont(-100)).tmAveCharWidth;
  EXPECT_EQ(m.Tm(wide).tmAveCharWidth, wide.lfWidth);
  // (within the rounding of the average width the request was made from)
  EXPECT_NEAR(m.Size(wide, u"Stacionaža").cx, 2 * normal.cx, 2 * normal.cx / 50);
  EXPECT_EQ(m.Tm(wide).tmHeight, 116);

  // Height 0 is a 12-unit cell, as in the recording device's model.
  EXPECT_EQ(m.Tm(MakeFont(0)).tmHeight, 12);
}

TEST(QPainterDeviceText, MissingFacesFallBackToDejaVuSans) {
  Measurer m;
  const struct {
    const char16_t* requested;
    const char16_t* used;
  } faces[] = {{u"DejaVu Serif", u"DejaVu Serif"}, {u"dejavu sans mono", u"DejaVu Sans Mono"},
               {u"No Such Face 7", u"DejaVu Sans"}, {u"", u"DejaVu Sans"}};
  for (const auto& f : faces) {
    LOGFONTW font = MakeFont(-20, 0, f.requested);
    Selected selected(m.canvas.dc(), CreateFontIndirectW(&font));
    WCHAR name[LF_FACESIZE] = {};
    const int n = GetTextFaceW(m.canvas.dc(), LF_FACESIZE, name);
    EXPECT_EQ(std::u16string(name), std::u16string(f.used)) << vantrel1::ToUtf8(f.requested);
    EXPECT_EQ(n, static_cast<int>(std::u16string(f.used).size()) + 1);
  }
}
